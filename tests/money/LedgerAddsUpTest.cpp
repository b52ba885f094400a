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

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <random>
#include <stdexcept>

using runtime::Currency;

namespace {

using Won = qint64;

/// What an order should hold, kept beside the database in whole won.
struct Books
{
    QDate date;
    Won total = 0; ///< as summed last
    std::optional<Won> owed = 0;
    std::map<int, Won> sold;     ///< by product
    std::array<Won, 5> ledger{}; ///< by kind
    int lines = 0;
    int entries = 0;

    Won balance() const
    {
        return total + ledger[ledger::Refund] - ledger[ledger::Cut] - ledger[ledger::Discount]
               - ledger[ledger::Payment];
    }
};

void require(bool holds, const QString &what = QStringLiteral("failed"))
{
    if (!holds)
        throw std::runtime_error(what.toStdString());
}

void open(SaleSession::RecordsetPtr &rows, const QString &source)
{
    rows = std::make_unique<ado::Recordset>();
    rows->Open(source, gcnnMasterDB, ado::CursorType::Keyset, ado::LockType::Optimistic);
}

/// A customer's orders on one engine with the books beside them, and random operations that must keep both alike.
class LedgerAddsUp : public testing::TestWithParam<ado::Engine>
{
protected:
    LedgerAddsUp()
        : database_(GetParam())
    {
        gcnnMasterDB = database_.connection();
        if (GetParam() == ado::Engine::SQLite) { // nothing here has to outlast a power cut
            gcnnMasterDB->Execute("PRAGMA synchronous = OFF");
            database_.run("PRAGMA synchronous = OFF");
        }
        session_.customer.lngCustPK = Patient;
    }
    ~LedgerAddsUp() override { gcnnMasterDB.reset(); }

    /// What went wrong with the seed, and the operations up to there; empty when all added up.
    std::string faultOf(unsigned seed, int comparedEvery)
    {
        random_.seed(seed);
        log_.clear();
        const auto told = [&](const QString &fault) {
            return QStringLiteral("seed %1\n%2\n%3").arg(QString::number(seed), log_.join(u'\n'), fault).toStdString();
        };
        try {
            openFreshBooks();
            for (int operation = 1; operation <= 30; ++operation) {
                act();
                if (operation % comparedEvery == 0)
                    compare();
            }
            return {};
        } catch (const runtime::RuntimeError &error) {
            return told(error.description());
        } catch (const std::exception &error) {
            return told(QString::fromUtf8(error.what()));
        }
    }

private:
    static constexpr int Patient = 41;

    int roll(int below) { return int(random_() % unsigned(below)); }
    int money() { return (roll(60) - 8) * 250; }
    QDate day() { return QDate(2026, 11, 20).addDays(roll(4)); }
    int kind() { return 1 + roll(4); }
    template <typename Row>
    int anyOf(const std::map<int, Row> &rows)
    {
        return std::next(rows.begin(), roll(int(rows.size())))->first;
    }
    void note(const char *what, int key, Won amount = 0)
    {
        log_ << QStringLiteral("%1 %2: %3").arg(QLatin1String(what)).arg(key).arg(amount);
    }
    ado::Recordset &orders() { return *session_.rsCustSaleMaster; }
    ShownOrder shown() { return shownOrder(orders()); }
    Books &at() { return books_.at(key_); }

    void openFreshBooks()
    {
        session_.release();
        books_.clear();
        products_.clear();
        for (const char *table : {"tPSProductMaster", "tPSOrderMaster", "tPSOrderDetail", "tPSTransaction"})
            database_.run(QStringLiteral("DELETE FROM ") + QLatin1String(table));
        // Orders of somebody else on the same days, which nothing may touch.
        database_.run("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Misugum) VALUES (42, '2026-11-20', 7), "
                      "(42, '2026-11-21', 7), (42, '2026-11-22', 7), (42, '2026-11-23', 7)");
        for (const int price : {1200, 35000, 450}) {
            database_.run(
                QStringLiteral("INSERT INTO tPSProductMaster (PM_Name, PM_UnitPrice, PM_IsTaxed) VALUES ('차', %1, %2)")
                    .arg(price)
                    .arg(int(price < 2000)));
            products_[database_.value("SELECT MAX(PM_PK) FROM tPSProductMaster").toInt()] = price;
        }
        open(session_.rsSaleProductLists, clsSQL().getProductMasterSQL());
        open(session_.rsCustSaleMaster, clsSQL().getOrderMasterSQL(Patient));
    }
    void stand(int order)
    {
        key_ = order;
        orders().setBookmark(order);
    }
    /// Makes a line or an entry and its order current; false when there is none.
    bool standOnAny(const char *columns, SaleSession::RecordsetPtr &list, QString (*source)(int order))
    {
        const QStringList rows = database_.rows(QStringLiteral("SELECT %1 ORDER BY 1").arg(QLatin1String(columns)));
        if (rows.isEmpty())
            return false;
        const QStringList values = rows[roll(int(rows.size()))].split(u'|');
        chosen_ = {values[0].toInt(), values[2].toUInt(), values[3].toLongLong()};
        stand(values[1].toInt());
        open(list, source(key_));
        list->setBookmark(chosen_.key);
        return true;
    }
    bool standOnLine()
    {
        return standOnAny("OrdD_PK, OrdM_PK, PM_PK, (OrdD_UnitPrice - OrdD_HalinUnit) * OrdD_Count FROM tPSOrderDetail",
                          session_.rsCustSaleDetails, [](int order) { return clsSQL().getOrderDetailSQL(order); });
    }
    bool standOnEntry()
    {
        return standOnAny("tpstrans_PK, tpstrans_OrderM_PK, tpstrans_Operator, tpstrans_Money FROM tPSTransaction",
                          session_.rsCustTranManage, [](int order) { return clsSQL().getCustTranSQL(Patient, order); });
    }

    /// Lines of a product that is gone do not count.
    void sum(Books &order)
    {
        order.total = 0;
        for (const auto &[product, amount] : order.sold)
            order.total += products_.count(product) ? amount : 0;
    }
    /// Of several orders of the date the server chooses which one takes the line.
    void adoptLine(int product, Won amount, QDate date)
    {
        const int key = database_.value("SELECT OrdM_PK FROM tPSOrderDetail ORDER BY OrdD_PK DESC LIMIT 1").toInt();
        require(books_.count(key) && books_[key].date == date, QStringLiteral("line on order %1").arg(key));
        books_[key].sold[product] += amount;
        ++books_[key].lines;
        sum(books_[key]);
    }
    void adoptOrder(QDate date)
    {
        const int key = database_.value("SELECT MAX(OrdM_PK) FROM tPSOrderMaster").toInt();
        require(!books_.count(key), QStringLiteral("no new order"));
        books_[key].date = date;
    }
    void book(int kind, Won amount)
    {
        at().ledger[std::size_t(kind)] += amount;
        ++at().entries;
    }
    void addOwed(Won amount) { at().owed = at().owed.value_or(0) + amount; }

    void act()
    {
        using Step = void (LedgerAddsUp::*)();
        static constexpr Step steps[] = {
            &LedgerAddsUp::sellOnNewOrder, &LedgerAddsUp::sell,         &LedgerAddsUp::sell,
            &LedgerAddsUp::sell,           &LedgerAddsUp::takeBack,     &LedgerAddsUp::takeBack,
            &LedgerAddsUp::payFirst,       &LedgerAddsUp::payFirst,     &LedgerAddsUp::payFurther,
            &LedgerAddsUp::payFurther,     &LedgerAddsUp::addEntry,     &LedgerAddsUp::addEntry,
            &LedgerAddsUp::changeEntry,    &LedgerAddsUp::rewriteEntry, &LedgerAddsUp::deleteEntry,
            &LedgerAddsUp::collect,        &LedgerAddsUp::collect,      &LedgerAddsUp::deleteLine,
            &LedgerAddsUp::deleteOrder,    &LedgerAddsUp::forgetOwed,   &LedgerAddsUp::dropProduct,
        };
        const Step step = steps[roll(std::size(steps))];
        if (books_.empty())
            return sellOnNewOrder();
        stand(anyOf(books_));
        (this->*step)();
    }
    /// A line to be typed, its product chosen in the list, and what it adds to the order.
    struct Sale
    {
        EntryLine typed;
        int product;
        Won amount;
    };
    Sale sale()
    {
        const int product = anyOf(products_), kindOfLine = roll(5) ? 0 : 1 + roll(2), discount = roll(3) * 50,
                  count = 1 + roll(5);
        session_.rsSaleProductLists->setBookmark(product);
        EntryLine typed{qint16(kindOfLine), QString::number(discount), QString::number(count), {}, {}};
        sales_.takeCurrentProduct(typed);
        return {typed, product, kindOfLine == 0 ? Won(products_[product] - discount) * count : 0};
    }
    void sellOnNewOrder()
    {
        const QDate date = day();
        const Sale sold = sale();
        note("sell on a new order of day", date.day(), sold.amount);
        sales_.setToday([date] { return date; });
        require(sales_.addDetailToNewOrder(sold.typed) == Outcome::Done);
        adoptOrder(date);
        adoptLine(sold.product, sold.amount, date);
    }
    void sell()
    {
        const Sale sold = sale();
        note("sell on order", key_, sold.amount);
        const int lines = at().lines;
        require(sales_.addDetailToSelectedOrder(shown(), sold.typed) == Outcome::Done);
        adoptLine(sold.product, sold.amount, at().date);
        require(at().lines == lines + 1, QStringLiteral("on another order"));
    }
    void takeBack()
    {
        if (!standOnLine())
            return;
        const Refund refund{qint16(-1 - roll(3)), roll(2) ? day() : at().date, {}, Currency::fromWon(roll(40) * 50)};
        note("take back of line", chosen_.key, refund.count);
        const bool hasOrder = std::any_of(books_.begin(), books_.end(),
                                          [&](const auto &order) { return order.second.date == refund.date; });
        const bool sells = products_.count(int(chosen_.kind));
        require(returns_.takeBack(returns_.currentLine(), refund) == (sells ? Outcome::Done : Outcome::ProductGone));
        if (!sells)
            return;
        if (!hasOrder)
            adoptOrder(refund.date);
        adoptLine(int(chosen_.kind), refund.unitPrice.toWon() * refund.count, refund.date);
    }
    void deleteLine()
    {
        if (!standOnLine())
            return;
        note("delete line", chosen_.key);
        require(sales_.deleteDetail(OrderKey(key_), LineKey(chosen_.key)) == Outcome::Done);
        at().sold[int(chosen_.kind)] -= chosen_.amount;
        --at().lines;
        sum(at());
    }

    void payFirst()
    {
        const QDate date = day();
        const struct
        {
            int kind, money;
        } parts[] = {{ledger::Discount, roll(2) ? money() : 0},
                     {ledger::Cut, roll(2) ? roll(10) * 10 : 0},
                     {ledger::Payment, money()},
                     {ledger::Payment, roll(2) ? money() : 0}};
        const int rest = money();
        note("first payment on order", key_, rest);
        ledger::appendFirstPayment(*gcnnMasterDB, {shown(), date, float(parts[0].money), float(parts[1].money),
                                                   float(parts[2].money), float(parts[3].money)});
        ledger::addOutstanding(*gcnnMasterDB, orders(), shown(), Currency::fromWon(rest));
        for (const auto &part : parts) {
            if (part.money != 0)
                book(part.kind, part.money);
        }
        addOwed(rest);
    }
    void payFurther()
    {
        const int code = kind(), amount = money();
        note("further operation on order", key_, amount);
        ledger::insertRow(*gcnnMasterDB, {shown(), day(), qint16(code), amount, QStringLiteral("01")});
        book(code, amount);
        if (roll(2)) {
            ledger::addOutstanding(*gcnnMasterDB, orders(), shown(), -Currency::fromWon(amount));
            addOwed(-amount);
        }
    }
    LedgerEntry typedEntry(int code, int amount)
    {
        return {day(), qint16(code), roll(2) ? QVariant(ledger::CashMethod) : QVariant(), Currency::fromWon(amount),
                {},    roll(2) == 1};
    }
    void addEntry()
    {
        const int code = kind(), amount = money();
        const LedgerEntry form = typedEntry(code, amount);
        note(form.recalculates ? "entry, recalculating, on order" : "entry on order", key_, amount);
        open(session_.rsCustTranManage, clsSQL().getCustTranSQL(Patient, key_));
        require(ledger::addFormEntry(session_, shown(), form));
        ledger::followAddedFormEntry(session_, shown(), form);
        book(code, amount);
        if (form.recalculates && code == ledger::Payment)
            at().owed = std::max<Won>(0, at().balance());
        else if (form.recalculates && code == ledger::Refund)
            at().owed = at().owed ? *at().owed + amount : 0; // meant so: without outstanding money it only becomes 0
    }
    void changeEntry()
    {
        if (!standOnEntry())
            return;
        const int amount = money();
        const LedgerEntry form = typedEntry(kind(), amount); // the row keeps its own kind
        note(form.recalculates ? "change of an entry, recalculating, on order" : "change of an entry on order", key_,
             amount);
        require(ledger::changeFormEntry(session_, shown(), LedgerKey(chosen_.key), form));
        at().ledger[chosen_.kind] += amount - chosen_.amount;
        if (form.recalculates)
            at().owed = std::max<Won>(0, at().balance());
    }
    void rewriteEntry()
    {
        if (!standOnEntry())
            return;
        const int code = roll(5), amount = money(); // 0: none chosen
        note("entry rewritten", chosen_.key, amount);
        ledger::updateRow(*gcnnMasterDB, ledger::shownRow(*session_.rsCustTranManage),
                          {shown(), day(), qint16(code), amount, {}});
        at().ledger[chosen_.kind] -= chosen_.amount;
        at().ledger[code ? std::size_t(code) : chosen_.kind] += amount;
    }
    void deleteEntry()
    {
        if (!standOnEntry())
            return;
        note("delete entry", chosen_.key);
        session_.rsCustTranManage->Delete();
        at().ledger[chosen_.kind] -= chosen_.amount;
        --at().entries;
    }
    void collect()
    {
        const int amount = money();
        note("collect outstanding money of order", key_, amount);
        outstanding::pay(*gcnnMasterDB, {shown(), day(), ledger::Payment, amount, QStringLiteral("10")});
        book(ledger::Payment, amount);
        if (at().owed)
            addOwed(-amount);
    }
    void deleteOrder()
    {
        note("delete order", key_);
        orders().Resync();
        open(session_.rsCustSaleDetails, clsSQL().getOrderDetailSQL(key_));
        open(session_.rsCustTranManage, clsSQL().getCustTranSQL(Patient, key_));
        require(sales_.deleteOrder(shown()) == Outcome::Done);
        books_.erase(key_);
    }
    /// An order of the time before outstanding money was kept, written by another desk.
    void forgetOwed()
    {
        note("no outstanding money on order", key_);
        database_.run(QStringLiteral("UPDATE tPSOrderMaster SET OrdM_Misugum = NULL WHERE OrdM_PK = %1").arg(key_));
        at().owed.reset();
    }
    /// The sums of the orders stay until their next recalculation.
    void dropProduct()
    {
        if (products_.size() == 1)
            return;
        const int product = anyOf(products_);
        note("delete product", product);
        gcnnMasterDB->Execute(clsSQL().delAProductSQL(product));
        session_.rsSaleProductLists->Requery();
        products_.erase(product);
    }

    void compare()
    {
        QStringList expected;
        int lines = 0, entries = 0;
        for (const auto &[key, order] : books_) {
            expected << QStringLiteral("%1|%2|%3|%4|%5|%6")
                            .arg(key)
                            .arg(order.date.toString(Qt::ISODate))
                            .arg(order.total)
                            .arg(order.owed ? QString::number(*order.owed) : QStringLiteral("NULL"))
                            .arg(order.lines)
                            .arg(order.entries);
            lines += order.lines;
            entries += order.entries;
            compareLedger(key, order);
        }
        QStringList rows =
            database_.rows(QStringLiteral("SELECT OrdM_PK, OrdM_Date, OrdM_Total, OrdM_Misugum, (SELECT COUNT(*) FROM "
                                          "tPSOrderDetail d WHERE d.OrdM_PK = m.OrdM_PK), "
                                          "(SELECT COUNT(*) FROM tPSTransaction WHERE tpstrans_OrderM_PK = OrdM_PK) "
                                          "FROM tPSOrderMaster m WHERE Cust_PK = 41 ORDER BY OrdM_PK"));
        // Nothing left over of other orders, and nothing done to those of somebody else.
        rows += database_.rows(
            "SELECT (SELECT COUNT(*) FROM tPSOrderDetail), (SELECT COUNT(*) FROM tPSTransaction), "
            "COUNT(*) FROM tPSOrderMaster WHERE OrdM_Misugum = 7 AND Cust_PK = 42 AND OrdM_Total IS NULL");
        expected += QStringLiteral("%1|%2|4").arg(lines).arg(entries);
        require(rows == expected, QStringLiteral("database:\n  %1\nbooks:\n  %2")
                                      .arg(rows.join(QLatin1String("\n  ")), expected.join(QLatin1String("\n  "))));
    }
    void compareLedger(int key, const Books &order)
    {
        clsOperationMoney sums;
        sums.OPM_SetConnection(gcnnMasterDB);
        qint32 cut = 0, discount = 0, paid = 0, refund = 0;
        require(sums.OPM_GetCutByTransaction(key, cut) && sums.OPM_GetDiscountByTransaction(key, discount)
                    && sums.OPM_GetPayByTransaction(key, paid)
                    && sums.OPM_GetRefundByTransaction(gcnnMasterDB, key, refund),
                QStringLiteral("no ledger sums"));
        require(
            (std::array<Won, 5>{0, cut, discount, paid, refund}) == order.ledger,
            QStringLiteral("ledger of order %1: %2 %3 %4 %5").arg(key).arg(cut).arg(discount).arg(paid).arg(refund));
        stand(key);
        orders().Resync();
        const Won balance = calcOrderBalance(&orders(), gcnnMasterDB, Patient, key).toWon();
        require(balance == order.balance(),
                QStringLiteral("balance of order %1: %2, not %3").arg(key).arg(balance).arg(order.balance()));
    }

    TestDatabase database_;
    SaleSession session_;
    OrderOperations sales_{session_};
    RefundOperations returns_{session_};
    std::map<int, Books> books_;  ///< by order
    std::map<int, int> products_; ///< price by product
    int key_ = 0;                 ///< of the order stood on
    struct
    {
        int key = 0;
        std::size_t kind = 0;
        Won amount = 0;
    } chosen_; ///< the line (its product) or entry stood on
    std::mt19937 random_;
    QStringList log_;
};

} // namespace

TEST_P(LedgerAddsUp, WhateverIsSoldPaidTakenBackAndDeleted)
{
    const unsigned seeds = GetParam() == ado::Engine::SQLite ? 1000 : 100;
    for (unsigned seed = 1; seed <= seeds; ++seed) {
        const std::string fault = faultOf(seed, 15);
        ASSERT_TRUE(fault.empty()) << faultOf(seed, 1) << "\n" << fault; // once more, to find the operation
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, LedgerAddsUp, testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL),
                         engineName);
