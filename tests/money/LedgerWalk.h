#pragma once

#include "data/OrderBalance.h"
#include "data/clsSQL.h"
#include "money/clsOperationMoney.h"
#include "platform/runtime/RuntimeError.h"
#include "sales/clsFunctions.h"
#include "session/SaleSession.h"
#include "session/modGlobalVars.h"
#include "tests/money/LedgerBooks.h"
#include "tests/support/TestDatabase.h"

#include <QSqlQuery>

#include <random>
#include <stdexcept>
#include <vector>

/// A customer's orders on one engine with the books beside them, and random operations that must keep both alike.
class LedgerWalk : public testing::TestWithParam<ado::Engine>
{
protected:
    LedgerWalk()
        : database_(GetParam())
    {
        gcnnMasterDB = database_.connection();
        if (GetParam() == ado::Engine::SQLite) { // nothing here has to outlast a power cut
            QSqlQuery(gcnnMasterDB->database()).exec(QStringLiteral("PRAGMA synchronous = OFF"));
            database_.run(QStringLiteral("PRAGMA synchronous = OFF"));
        }
        session_.customer.lngCustPK = Patient;
    }
    ~LedgerWalk() override { gcnnMasterDB.reset(); }

    /// What went wrong with the seed, and the operations up to there; empty when all added up.
    std::string faultOf(unsigned seed, int operations)
    {
        const std::string fault = faultOf(seed, operations, 10);
        if (fault.empty())
            return fault;
        const std::string closer = faultOf(seed, operations, 1); // once more, to find the operation
        return closer.empty() ? fault : closer;
    }
    std::string faultOf(unsigned seed, int operations, int comparedEvery)
    {
        random_.seed(seed);
        log_.clear();
        try {
            openFreshBooks();
            for (int i = 1; i <= operations; ++i) {
                act();
                if (i % comparedEvery == 0)
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

    /// One operation, chosen by the dice, on the database and in the books.
    virtual void act() = 0;

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
    void sumAnew() { require(clsFunctions().reCalculateOMTotal(gcnnMasterDB, key_) == 1, QStringLiteral("no sums")); }

    TestDatabase database_;
    SaleSession session_;
    Books books_;
    int key_ = 0; ///< of the order stood on
    std::optional<Won> *owed_ = nullptr; ///< its outstanding money in the books

private:
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

    std::mt19937 random_;
    QStringList log_;
};
