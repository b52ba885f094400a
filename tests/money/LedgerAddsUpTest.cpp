#include "data/OrderBalance.h"
#include "data/clsSQL.h"
#include "money/LedgerEntry.h"
#include "money/OutstandingMoney.h"
#include "money/clsOperationMoney.h"
#include "platform/runtime/RuntimeError.h"
#include "sales/RefundOperations.h"
#include "sales/clsFunctions.h"
#include "session/modGlobalVars.h"
#include "tests/support/TestDatabase.h"

#include <QSqlQuery>

#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <stdexcept>

using runtime::Currency;

namespace {

using Won = qint64;

/// What the database should hold, kept beside it in whole won.
struct Books
{
    struct Product { int price; bool taxed; };
    struct Order { QDate date; Won taxed = 0, taxFree = 0, discount = 0; std::optional<Won> owed = 0; };
    struct Line { int order, product, price, discount, count; };
    struct Entry { int order, kind, money; QDate date; };

    std::map<int, Product> products;
    std::map<int, Order> orders;
    std::map<int, Line> lines;
    std::map<int, Entry> entries;

    /// Lines of a product that is gone count in the discounts only.
    void sum(int key)
    {
        Order &order = orders.at(key);
        order.taxed = order.taxFree = order.discount = 0;
        for (const auto &[lineKey, line] : lines) {
            if (line.order != key)
                continue;
            order.discount += Won(line.discount) * line.count;
            if (const auto product = products.find(line.product); product != products.end())
                (product->second.taxed ? order.taxed : order.taxFree) += Won(line.price - line.discount) * line.count;
        }
    }
    Won ledger(int key, int kind) const
    {
        Won sum = 0;
        for (const auto &[entryKey, entry] : entries)
            sum += entry.order == key && entry.kind == kind ? entry.money : 0;
        return sum;
    }
    Won balance(int key) const
    {
        const Order &order = orders.at(key);
        return order.taxed + order.taxFree + ledger(key, ledger::Refund) - ledger(key, ledger::Cut)
            - ledger(key, ledger::Discount) - ledger(key, ledger::Payment);
    }
    QStringList text() const
    {
        QStringList rows;
        for (const auto &[key, o] : orders)
            rows << QStringLiteral("%1|%2|%3|%4|%5|%6|").arg(key).arg(o.date.toString(Qt::ISODate)).arg(o.taxed).arg(o.taxFree)
                        .arg(o.discount).arg(o.taxed + o.taxFree) + (o.owed ? QString::number(*o.owed) : QStringLiteral("NULL"));
        for (const auto &[key, l] : lines)
            rows << QStringLiteral("%1|%2|%3|%4|%5|%6").arg(key).arg(l.order).arg(l.product).arg(l.price).arg(l.discount).arg(l.count);
        for (const auto &[key, e] : entries)
            rows << QStringLiteral("%1|%2|%3|%4|%5").arg(key).arg(e.order).arg(e.kind).arg(e.money).arg(e.date.toString(Qt::ISODate));
        return rows;
    }
};

class LedgerAddsUp : public testing::TestWithParam<ado::Engine>
{
protected:
    LedgerAddsUp()
        : database_(GetParam())
    {
        gcnnMasterDB = database_.connection();
        if (GetParam() == ado::Engine::SQLite) // nothing here has to outlast a power cut
            QSqlQuery(gcnnMasterDB->database()).exec(QStringLiteral("PRAGMA synchronous = OFF"));
        session_.customer.lngCustPK = Patient;
    }
    ~LedgerAddsUp() override { gcnnMasterDB.reset(); }

    /// What went wrong with the seed; empty when all added up.
    std::string faultOf(unsigned seed, int operations)
    {
        random_.seed(seed);
        log_.clear();
        try {
            openFreshBooks();
            for (int i = 0; i < operations; ++i) {
                act();
                compare();
            }
            checkSums();
            return {};
        } catch (const runtime::RuntimeError &error) {
            return toldWith(seed, error.description());
        } catch (const std::exception &error) {
            return toldWith(seed, QString::fromUtf8(error.what()));
        }
    }

private:
    static constexpr int Patient = 41;

    std::string toldWith(unsigned seed, const QString &fault) const
    {
        return (QStringLiteral("seed %1\n").arg(seed) + log_.join(u'\n') + u'\n' + fault).toStdString();
    }
    static void require(bool holds, const QString &what)
    {
        if (!holds)
            throw std::runtime_error(what.toStdString());
    }
    void note(const char *what, int key, Won amount = 0) { log_ << QStringLiteral("%1 %2: %3").arg(QLatin1String(what)).arg(key).arg(amount); }

    int roll(int below) { return int(random_() % unsigned(below)); }
    int money() { return (roll(60) - 8) * 250; }
    QDate day() { return QDate(2026, 11, 20).addDays(roll(4)); }
    ledger::Operator kind() { return ledger::Operator(1 + roll(4)); }
    template <typename Row>
    int anyOf(const std::map<int, Row> &rows) { return std::next(rows.begin(), roll(int(rows.size())))->first; }

    void openFreshBooks()
    {
        session_.release();
        books_ = {};
        for (const char *table : {"tPSProductMaster", "tPSOrderMaster", "tPSOrderDetail", "tPSTransaction"})
            database_.run(QStringLiteral("DELETE FROM ") + QLatin1String(table));
        // Orders of somebody else on the same days, which nothing may touch.
        database_.run(QStringLiteral("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Misugum) VALUES (42, '2026-11-20', 7), "
                                     "(42, '2026-11-21', 7), (42, '2026-11-22', 7), (42, '2026-11-23', 7)"));
        for (const Books::Product product : {Books::Product{1200, true}, {35000, false}, {450, true}}) {
            database_.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name, PM_UnitPrice, PM_IsTaxed) VALUES ('차', %1, %2)")
                              .arg(product.price).arg(int(product.taxed)));
            adopt("tPSProductMaster", "PM_PK", books_.products, {product});
        }
        open(session_.rsSaleProductLists, clsSQL().getProductMasterSQL());
        open(session_.rsCustSaleMaster, clsSQL().getOrderMasterSQL(Patient));
    }
    static void open(SaleSession::RecordsetPtr &rows, const QString &source)
    {
        rows = std::make_unique<ado::Recordset>();
        rows->Open(source, gcnnMasterDB, ado::CursorType::Keyset, ado::LockType::Optimistic);
    }
    /// Takes rows just written into the books, with the keys that the server gave them, and no other number of them.
    template <typename Row>
    int adopt(const char *table, const char *key, std::map<int, Row> &known, const std::vector<Row> &written)
    {
        const QStringList keys = database_.rows(QStringLiteral("SELECT %1 FROM %2 WHERE %1 > %3 ORDER BY %1")
            .arg(QLatin1String(key), QLatin1String(table)).arg(known.empty() ? 0 : known.rbegin()->first));
        require(keys.size() == qsizetype(written.size()), QStringLiteral("%1 new rows").arg(keys.size()));
        for (qsizetype i = 0; i < keys.size(); ++i)
            known[keys[i].toInt()] = written[std::size_t(i)];
        return keys.isEmpty() ? 0 : keys.last().toInt();
    }
    void adoptEntries(const std::vector<Books::Entry> &written) { adopt("tPSTransaction", "tpstrans_PK", books_.entries, written); }
    /// Of several orders of the date the server chooses which one takes the line.
    void adoptLine(Books::Line line, QDate date)
    {
        const int key = adopt("tPSOrderDetail", "OrdD_PK", books_.lines, {line});
        const int order = database_.value(QStringLiteral("SELECT OrdM_PK FROM tPSOrderDetail WHERE OrdD_PK = %1").arg(key)).toInt();
        require(books_.orders.count(order) && books_.orders[order].date == date, QStringLiteral("line on order %1").arg(order));
        books_.lines[key].order = order;
        books_.sum(order);
    }
    void adoptOrder(QDate date)
    {
        const QString key = database_.value(QStringLiteral("SELECT MAX(OrdM_PK) FROM tPSOrderMaster"));
        require(!books_.orders.count(key.toInt()), QStringLiteral("no new order"));
        books_.orders[key.toInt()] = {date};
    }

    void act()
    {
        using Step = void (LedgerAddsUp::*)();
        static constexpr Step steps[] = {
            &LedgerAddsUp::sellOnNewOrder, &LedgerAddsUp::sell, &LedgerAddsUp::sell, &LedgerAddsUp::sell, &LedgerAddsUp::takeBack,
            &LedgerAddsUp::takeBack, &LedgerAddsUp::payFirst, &LedgerAddsUp::payFirst, &LedgerAddsUp::payFurther,
            &LedgerAddsUp::payFurther, &LedgerAddsUp::addEntry, &LedgerAddsUp::addEntry, &LedgerAddsUp::changeEntry,
            &LedgerAddsUp::rewriteEntry, &LedgerAddsUp::deleteEntry, &LedgerAddsUp::collect, &LedgerAddsUp::collect,
            &LedgerAddsUp::editOrder, &LedgerAddsUp::deleteLine, &LedgerAddsUp::deleteOrder, &LedgerAddsUp::emptyLedger,
            &LedgerAddsUp::forgetOwed, &LedgerAddsUp::dropProduct,
        };
        const Step step = steps[roll(std::size(steps))];
        if (books_.orders.empty())
            return sellOnNewOrder();
        stand(anyOf(books_.orders));
        (this->*step)();
    }
    void stand(int order)
    {
        key_ = order;
        session_.rsCustSaleMaster->setBookmark(order);
        owed_ = &books_.orders.at(order).owed;
    }
    void standOnLine(int line)
    {
        stand(books_.lines[line].order);
        open(session_.rsCustSaleDetails, clsSQL().getOrderDetailSQL(key_));
        session_.rsCustSaleDetails->setBookmark(line);
    }
    int standOnEntry()
    {
        const int entry = anyOf(books_.entries);
        stand(books_.entries[entry].order);
        openLedger();
        session_.rsCustTranManage->setBookmark(entry);
        return entry;
    }
    void openLedger() { open(session_.rsCustTranManage, clsSQL().getCustTranSQL(Patient, key_)); }
    ado::Recordset &orders() { return *session_.rsCustSaleMaster; }
    void addOwed(Won amount) { *owed_ = owed_->value_or(0) + amount; }
    void owedIsBalance() { *owed_ = std::max<Won>(0, books_.balance(key_)); }

    EntryLine typed(Books::Line &line)
    {
        line.product = anyOf(books_.products);
        session_.rsSaleProductLists->setBookmark(line.product);
        const int kindOfLine = roll(5) ? 0 : 1 + roll(2);
        const int discount = roll(3) * 50;
        line.count = 1 + roll(5);
        line.price = kindOfLine == 0 ? books_.products[line.product].price : 0;
        line.discount = kindOfLine == 0 ? discount : 0;
        return {std::int16_t(kindOfLine), QString::number(discount), QString::number(line.count)};
    }
    void sellOnNewOrder()
    {
        const QDate date = day();
        Books::Line line{};
        const EntryLine entry = typed(line);
        note("sell on a new order of day", date.day(), line.count);
        sales_.setToday([date] { return date; });
        require(sales_.addDetailToNewOrder(entry) == Outcome::Done, QStringLiteral("failed"));
        adoptOrder(date);
        adoptLine(line, date);
    }
    void sell()
    {
        Books::Line line{};
        const EntryLine entry = typed(line);
        note("sell on order", key_, line.count);
        require(sales_.addDetailToSelectedOrder(entry) == Outcome::Done, QStringLiteral("failed"));
        adoptLine(line, books_.orders[key_].date);
        require(books_.lines.rbegin()->second.order == key_, QStringLiteral("on another order"));
    }
    void takeBack()
    {
        if (books_.lines.empty())
            return;
        const int sold = anyOf(books_.lines);
        standOnLine(sold);
        const int price = roll(40) * 50;
        const Refund refund{std::int16_t(-1 - roll(3)), roll(2) ? day() : books_.orders[key_].date, {}, Currency::fromWon(price)};
        note("take back of line", sold, refund.count);
        const bool hasOrder = std::any_of(books_.orders.begin(), books_.orders.end(), [&](const auto &o) { return o.second.date == refund.date; });
        require(returns_.takeBack(returns_.currentLine(), refund) == Outcome::Done, QStringLiteral("failed"));
        if (!hasOrder)
            adoptOrder(refund.date);
        adoptLine({0, books_.lines[sold].product, price, 0, refund.count}, refund.date);
    }
    void deleteLine()
    {
        if (books_.lines.empty())
            return;
        const int line = anyOf(books_.lines);
        standOnLine(line);
        note("delete line", line);
        require(sales_.deleteDetail() == Outcome::Done, QStringLiteral("failed"));
        books_.lines.erase(line);
        books_.sum(key_);
    }

    void payFirst()
    {
        const QDate date = day();
        const struct { int kind, money; } parts[] = {{ledger::Discount, roll(2) * money()}, {ledger::Cut, roll(2) * roll(10) * 10},
                                                     {ledger::Payment, money()}, {ledger::Payment, roll(2) * money()}};
        std::vector<Books::Entry> written;
        for (const auto &part : parts)
            if (part.money != 0)
                written.push_back({key_, part.kind, part.money, date});
        const int rest = money();
        note("first payment on order", key_, rest);
        ledger::appendFirstPayment(*gcnnMasterDB, {Patient, key_, date, float(parts[0].money), float(parts[1].money),
                                                   float(parts[2].money), float(parts[3].money)});
        ledger::addOutstanding(orders(), Currency::fromWon(rest));
        adoptEntries(written);
        addOwed(rest);
    }
    void payFurther()
    {
        const Books::Entry entry{key_, kind(), money(), day()};
        note("further operation on order", key_, entry.money);
        ledger::append(*gcnnMasterDB, {Patient, key_, entry.date, qint16(entry.kind), entry.money, QStringLiteral("01")});
        adoptEntries({entry});
        if (roll(2)) {
            ledger::addOutstanding(orders(), -Currency::fromWon(entry.money));
            addOwed(-entry.money);
        }
    }
    LedgerEntry typed(const Books::Entry &entry)
    {
        return {entry.date, qint16(entry.kind), roll(2) ? QVariant(ledger::CashMethod) : QVariant(), Currency::fromWon(entry.money), {}, roll(2) == 1};
    }
    void addEntry()
    {
        const Books::Entry entry{key_, kind(), money(), day()};
        const LedgerEntry form = typed(entry);
        note(form.recalculates ? "entry, recalculating, on order" : "entry on order", key_, entry.money);
        openLedger();
        require(ledger::addEntry(session_, form), QStringLiteral("failed"));
        adoptEntries({entry});
        ledger::followAddedEntry(session_, form);
        if (form.recalculates && entry.kind == ledger::Payment)
            owedIsBalance();
        else if (form.recalculates && entry.kind == ledger::Refund)
            *owed_ = *owed_ ? **owed_ + entry.money : 0; // meant so: without outstanding money it only becomes 0
    }
    void changeEntry()
    {
        if (books_.entries.empty())
            return;
        Books::Entry &entry = books_.entries[standOnEntry()];
        entry.money = money();
        entry.date = day();
        LedgerEntry form = typed(entry);
        form.intOperator = kind(); // the row keeps its own
        note(form.recalculates ? "change of an entry, recalculating, on order" : "change of an entry on order", key_, entry.money);
        require(ledger::changeEntry(session_, form), QStringLiteral("failed"));
        if (form.recalculates)
            owedIsBalance();
    }
    void rewriteEntry()
    {
        if (books_.entries.empty())
            return;
        const int key = standOnEntry();
        books_.entries[key] = {key_, kind(), money(), day()};
        const Books::Entry &entry = books_.entries[key];
        note("entry rewritten", key, entry.money);
        ledger::change(*gcnnMasterDB, key, {Patient, key_, entry.date, qint16(entry.kind), entry.money, {}});
    }
    void deleteEntry()
    {
        if (books_.entries.empty())
            return;
        const int key = standOnEntry();
        note("delete entry", key);
        session_.rsCustTranManage->Delete();
        books_.entries.erase(key);
    }
    void emptyLedger()
    {
        note("delete all entries of order", key_);
        require(clsOperationMoney().OPM_DeleteAllByReceipt(gcnnMasterDB, key_) == 0, QStringLiteral("failed"));
        std::erase_if(books_.entries, [this](const auto &entry) { return entry.second.order == key_; });
    }
    void collect()
    {
        const Books::Entry entry{key_, ledger::Payment, money(), day()};
        note("collect outstanding money of order", key_, entry.money);
        outstanding::pay(*gcnnMasterDB, {Patient, key_, entry.date, ledger::Payment, entry.money, QStringLiteral("10")});
        adoptEntries({entry});
        if (*owed_)
            addOwed(-entry.money);
    }

    void editOrder()
    {
        orders().Resync();
        Books::Order &order = books_.orders[key_];
        const int owed = money();
        order.date = day();
        order.owed = owed;
        books_.sum(key_);
        note("edit of order", key_, owed);
        const QString total = QString::number(order.discount);
        require(sales_.saveOrder({{}, {}, {}, {}, {}, total, QString::number(owed), false, order.date}) == Outcome::Done, QStringLiteral("failed"));
        sumAnew();
    }
    void sumAnew() { require(clsFunctions().reCalculateOMTotal(gcnnMasterDB, key_) == 1, QStringLiteral("no sums")); }
    void deleteOrder()
    {
        note("delete order", key_);
        orders().Resync();
        require(sales_.deleteOrder() == Outcome::Done, QStringLiteral("failed"));
        std::erase_if(books_.lines, [this](const auto &line) { return line.second.order == key_; });
        std::erase_if(books_.entries, [this](const auto &entry) { return entry.second.order == key_; });
        books_.orders.erase(key_);
    }
    /// An order of the time before outstanding money was kept, written by another desk.
    void forgetOwed()
    {
        note("no outstanding money on order", key_);
        database_.run(QStringLiteral("UPDATE tPSOrderMaster SET OrdM_Misugum = NULL WHERE OrdM_PK = %1").arg(key_));
        owed_->reset();
    }
    /// The sums of the orders stay until their next recalculation.
    void dropProduct()
    {
        if (books_.products.size() == 1)
            return;
        const int product = anyOf(books_.products);
        note("delete product", product);
        gcnnMasterDB->Execute(clsSQL().delAProductSQL(product));
        session_.rsSaleProductLists->Requery();
        books_.products.erase(product);
    }

    void compare()
    {
        QStringList rows = database_.rows(QStringLiteral("SELECT OrdM_PK, OrdM_Date, OrdM_TaxTotal, OrdM_TaxFreeTotal, OrdM_HalinTotal, "
                                                         "OrdM_Total, OrdM_Misugum FROM tPSOrderMaster WHERE Cust_PK = 41 ORDER BY OrdM_PK"));
        rows += database_.rows(QStringLiteral("SELECT OrdD_PK, OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count "
                                              "FROM tPSOrderDetail ORDER BY OrdD_PK"));
        rows += database_.rows(QStringLiteral("SELECT tpstrans_PK, tpstrans_OrderM_PK, tpstrans_Operator, tpstrans_Money, tpstrans_Date "
                                              "FROM tPSTransaction ORDER BY tpstrans_PK"));
        const QStringList books = books_.text();
        require(rows == books, QStringLiteral("database:\n  %1\nbooks:\n  %2").arg(rows.join(QLatin1String("\n  ")), books.join(QLatin1String("\n  "))));
    }
    void checkSums()
    {
        clsOperationMoney sums;
        sums.OPM_SetConnection(gcnnMasterDB);
        for (const auto &[key, order] : books_.orders) {
            stand(key);
            sumAnew();
            books_.sum(key);
            orders().Resync();
            qint32 cut = 0, discount = 0, paid = 0, refund = 0;
            require(sums.OPM_GetCutByTransaction(key, cut) && sums.OPM_GetDiscountByTransaction(key, discount)
                        && sums.OPM_GetPayByTransaction(key, paid) && sums.OPM_GetRefundByTransaction(gcnnMasterDB, key, refund),
                    QStringLiteral("no ledger sums"));
            const Won expected[] = {books_.ledger(key, 1), books_.ledger(key, 2), books_.ledger(key, 3), books_.ledger(key, 4)};
            require(cut == expected[0] && discount == expected[1] && paid == expected[2] && refund == expected[3],
                    QStringLiteral("ledger of order %1: %2 %3 %4 %5").arg(key).arg(cut).arg(discount).arg(paid).arg(refund));
            const Won balance = calcOrderBalance(&orders(), gcnnMasterDB, Patient, key).toWon();
            require(balance == books_.balance(key), QStringLiteral("balance of order %1: %2, not %3").arg(key).arg(balance).arg(books_.balance(key)));
        }
        compare();
        require(database_.value(QStringLiteral("SELECT COUNT(*) FROM tPSOrderMaster WHERE OrdM_Misugum = 7 AND Cust_PK = 42 AND OrdM_Total IS NULL")) == QLatin1String("4"),
                QStringLiteral("another customer's order was touched"));
    }

    TestDatabase database_;
    SaleSession session_;
    OrderOperations sales_{session_};
    RefundOperations returns_{session_};
    std::mt19937 random_;
    Books books_;
    QStringList log_;
    int key_ = 0;
    std::optional<Won> *owed_ = nullptr;
};

} // namespace

TEST_P(LedgerAddsUp, WhateverIsSoldPaidTakenBackAndDeleted)
{
    const unsigned seeds = GetParam() == ado::Engine::SQLite ? 1000 : 100;
    for (unsigned seed = 1; seed <= seeds; ++seed) {
        const std::string fault = faultOf(seed, 30);
        ASSERT_TRUE(fault.empty()) << fault;
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, LedgerAddsUp, testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL), engineName);
