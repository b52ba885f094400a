#include "money/OutstandingMoney.h"
#include "platform/ado/Recordset.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/support/TestDatabase.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Two customers' orders, the keys in the order of their writing, and no ledger yet.
class OutstandingOrders : public testing::TestWithParam<ado::Engine>
{
protected:
    OutstandingOrders()
        : database_(GetParam())
    {
        database_.run(QStringLiteral("INSERT INTO Customer (name, sn) VALUES ('홍길동', 'C-1')"));
        database_.run(QStringLiteral("INSERT INTO Customer (name, sn) VALUES ('김영희', 'C-2')"));
        for (const char *order : {"1, '2026-11-20', 5000", "2, '2026-11-21', 300", "1, '2026-11-22', 0",
                                  "1, '2026-11-23', -700", "2, '2026-11-24', NULL", "1, '2026-11-24', 2000000000"})
            database_.run(QStringLiteral("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Misugum) VALUES (%1)")
                              .arg(QString::fromLatin1(order)));
    }

    std::vector<int> listed(qint16 mode)
    {
        ado::Recordset rows;
        rows.setCursorLocation(ado::CursorLocation::Client);
        rows.Open(outstanding::listSQL(mode, 1), database_.connection(), ado::CursorType::Keyset, ado::LockType::Optimistic);
        std::vector<int> keys;
        for (; rows.hasCurrent(); rows.MoveNext()) {
            keys.push_back(runtime::CLng(rows[QStringLiteral("OrdM_PK")]));
            rows.Resync(); // the list's rows can be read again one by one, or this raises
        }
        return keys;
    }
    std::string owed(int key)
    {
        return database_.value(QStringLiteral("SELECT OrdM_Misugum FROM tPSOrderMaster WHERE OrdM_PK = %1").arg(key)).toStdString();
    }
    QStringList ledger()
    {
        return database_.rows(QStringLiteral("SELECT tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, "
                                             "tpstrans_Money, tpstrans_Method, tpstrans_Memo FROM tPSTransaction ORDER BY tpstrans_PK"));
    }
    void pay(int key, qint32 money, const char *method)
    {
        outstanding::pay(*database_.connection(), {1, key, QDate(2026, 12, 1), ledger::Payment, money, QString::fromLatin1(method)});
    }
    /// Makes every statement on the table fail.
    void hide(const char *table) { database_.run(QStringLiteral("ALTER TABLE %1 RENAME TO hidden").arg(QString::fromLatin1(table))); }
    void bringBack(const char *table) { database_.run(QStringLiteral("ALTER TABLE hidden RENAME TO %1").arg(QString::fromLatin1(table))); }

    TestDatabase database_;
};

} // namespace

TEST_P(OutstandingOrders, AreListedByNameAndThenTheNewestFirst)
{
    EXPECT_THAT(listed(outstanding::AllCustomers), ElementsAre(2, 6, 4, 1));
    EXPECT_THAT(listed(outstanding::OneCustomer), ElementsAre(6, 4, 1));
    EXPECT_THAT(listed(2), ElementsAre(5, 2, 6, 4, 3, 1)) << "no other mode leaves anything out";
}

TEST_P(OutstandingOrders, APaymentLessensWhatIsOwedAndStandsInTheLedger)
{
    const struct
    {
        int key;
        qint32 money;
        const char *method;
        const char *left;
    } cases[] = {
        {1, 3000, "10", "2000"}, {1, 2000, "11", "0"}, {2, 500, "12", "-200"}, {4, -700, "10", "0"}, {6, 2000000000, "10", "0"},
    };
    QStringList written;
    for (const auto &c : cases) {
        pay(c.key, c.money, c.method);
        EXPECT_EQ(owed(c.key), c.left);
        written += QStringLiteral("1|%1|2026-12-01|3|%2|%3|").arg(c.key).arg(c.money).arg(QString::fromLatin1(c.method));
    }
    EXPECT_EQ(ledger(), written);
}

TEST_P(OutstandingOrders, AFailureAnywhereLeavesOrderAndLedgerAsTheyWere)
{
    for (const char *table : {"tPSOrderMaster", "tPSTransaction"}) {
        SCOPED_TRACE(table);
        hide(table);
        EXPECT_THROW(pay(1, 3000, "10"), runtime::RuntimeError);
        bringBack(table);
        EXPECT_FALSE(database_.connection()->inTransaction());
    }
    EXPECT_THROW(pay(1, 3000, "bad"), runtime::RuntimeError) << "no code of two characters";
    EXPECT_THROW(pay(99, 3000, "10"), runtime::RuntimeError) << "an order that another desk deleted";
    EXPECT_EQ(owed(1), "5000");
    EXPECT_THAT(ledger(), IsEmpty());
    pay(1, 1, "10");
    EXPECT_EQ(owed(1), "4999");
}

INSTANTIATE_TEST_SUITE_P(Engines, OutstandingOrders, testing::ValuesIn(allEngines), engineName);
