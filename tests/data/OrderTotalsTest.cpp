#include "tests/data/FilledClinic.h"

#include "data/OrderBalance.h"
#include "data/clsSQL.h"
#include "sales/clsFunctions.h"

#include <gtest/gtest.h>

using runtime::Currency;

namespace {

class OrderTotals : public testing::TestWithParam<ado::Engine>
{
protected:
    OrderTotals()
        : database_(clinic::filledToWrite(GetParam()))
        , connection_(database_.connection())
    {
    }

    QString totalsOf(qint32 order)
    {
        return database_.value(QStringLiteral("SELECT OrdM_TaxTotal, OrdM_TaxFreeTotal, OrdM_HalinTotal, OrdM_Total, "
                                              "OrdM_Misugum FROM tPSOrderMaster WHERE OrdM_PK = %1")
                                   .arg(order));
    }

    TestDatabase &database_;
    ado::ConnectionPtr connection_;
};

TEST_P(OrderTotals, AreTheSumsOfTheLinesAndLeaveOutstandingMoneyAlone)
{
    // totals: taxed, tax-free, discounts, total, outstanding
    const struct
    {
        const char *what;
        qint32 order;
        QString totals;
    } table[] = {
        {"a return subtracts; service and loss add nothing", 101, "1800|0|300|1800|500"},
        {"a line whose product is gone counts among the discounts alone", 102, "0|85000|5020|85000|0"},
        {"a line without price adds nothing", 103, "100000|0|0|100000|NULL"},
        {"a return alone is negative", 104, "-900|0|0|-900|-300"},
        {"no lines give zeros", 105, "0|0|0|0|0"},
    };
    for (const auto &row : table) {
        EXPECT_EQ(clsFunctions().reCalculateOMTotal(connection_, row.order), 1);
        EXPECT_EQ(totalsOf(row.order), row.totals) << row.what;
    }
    connection_->Execute(clsSQL().delCustSaleDetailByOrdMPKSQL(101));
    connection_->Execute(clsSQL().insDB2OrderDetailSQL(101, 1, Currency::fromWon(1000), Currency::fromWon(100), 3, 0));
    clsFunctions().reCalculateOMTotal(connection_, 101);
    EXPECT_EQ(totalsOf(101), "2700|0|300|2700|500");
}

TEST_P(OrderTotals, CannotBeSummedWithoutADatabase)
{
    ado::ConnectionPtr none;
    EXPECT_EQ(clsFunctions().reCalculateOMTotal(none, 101), 0);
    EXPECT_EQ(clsFunctions().CountNoOfProductUsed(none, 1), 0);
    EXPECT_EQ(clsFunctions().countSameExistProductName(none, "경옥고"), 0);
    OrderTranTotals totals;
    totals.cut = Currency::fromWon(1);
    EXPECT_EQ(getOrderTranTotals(none, 1, 101, totals), -1);
    EXPECT_TRUE(totals.cut.isZero());
    ado::Recordset orders;
    orders.Open(clsSQL().getOrderMasterSQL(1), connection_, ado::CursorType::Keyset, ado::LockType::ReadOnly);
    EXPECT_TRUE(calcOrderBalance(&orders, none, 1, 101).isZero());
}

TEST_P(OrderTotals, CountProductsInUse)
{
    EXPECT_EQ(clsFunctions().countSameExistProductName(connection_, "홍삼정"), 2);
    EXPECT_EQ(clsFunctions().countSameExistProductName(connection_, "없음"), 0);
    EXPECT_EQ(clsFunctions().countSameExistProductName(connection_, "a'b"), 0); // the text breaks, and counts as none
    EXPECT_EQ(clsFunctions().CountNoOfProductUsed(connection_, 2), 3);
    EXPECT_EQ(clsFunctions().CountNoOfProductUsed(connection_, 4), 0); // not handled: unused
    EXPECT_EQ(clsFunctions().CountNoOfProductUsed(connection_, 3), 0);
}

TEST_P(OrderTotals, KeepAMuchSoldProductInUse)
{
    for (int doubled = 0; doubled < 14; ++doubled)
        connection_->Execute(
            "INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK) SELECT OrdM_PK, PM_PK FROM tPSOrderDetail WHERE PM_PK = 2");
    ASSERT_EQ(database_.value("SELECT COUNT(*) FROM tPSOrderDetail WHERE PM_PK = 2"), "49152");
    EXPECT_EQ(clsFunctions().CountNoOfProductUsed(connection_, 2), 32767);
}

TEST_P(OrderTotals, OfAnOrderThatHasNoneOrIsNotThereBalanceAsZero)
{
    ado::Recordset orders;
    orders.Open(clsSQL().getOrderMasterSQL(1), connection_, ado::CursorType::Keyset, ado::LockType::Optimistic);
    orders.setBookmark(103); // its total is NULL: 0 + 40 paid back - 0 received
    EXPECT_EQ(calcOrderBalance(&orders, connection_, 1, 103), Currency::fromWon(40));

    EXPECT_TRUE(calcOrderBalance(nullptr, connection_, 1, 101).isZero());
    orders.Close();
    EXPECT_TRUE(calcOrderMisugum(&orders, connection_, 1, 101).isZero());
    orders.Open(clsSQL().getOrderMasterSQL(3), connection_, ado::CursorType::Keyset, ado::LockType::Optimistic);
    EXPECT_TRUE(calcOrderBalance(&orders, connection_, 1, 101).isZero());
}

INSTANTIATE_TEST_SUITE_P(Engines, OrderTotals, testing::ValuesIn(allEngines), engineName);

} // namespace
