#include "sales/OrderOperations.h"

#include "data/clsSQL.h"
#include "tests/support/LogLines.h"
#include "tests/support/SaleDatabase.h"

namespace {

class OrderFlow : public SaleDatabase
{
protected:
    OrderFlow()
    {
        product("홍삼", 1000);
        openAll();
    }

    void openAll()
    {
        openRows(session_.rsSaleProductLists, clsSQL().getProductMasterSQL(false));
        openRows(session_.rsCustSaleMaster, clsSQL().getOrderMasterSQL(Patient));
        openRows(session_.rsCustSaleDetails, clsSQL().getOrderDetailSQL(-1));
    }

    Rows orders() { return rows("SELECT OrdM_PK, OrdM_Date, OrdM_Total FROM tPSOrderMaster ORDER BY OrdM_PK"); }
    Rows lines()
    {
        return rows("SELECT OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType "
                    "FROM tPSOrderDetail ORDER BY OrdD_PK");
    }

    EntryLine line(const char *quantity, const char *discount = "\\0", qint16 kind = 0)
    {
        EntryLine typed{kind, QString::fromUtf8(discount), QString::fromUtf8(quantity), {}, {}};
        operations_.takeCurrentProduct(typed);
        return typed;
    }
    OrderOperations operations_{session_, [] { return today(); }};
};

} // namespace

TEST_F(OrderFlow, ANewOrderTakesTheCustomersDeliveryDataAndTheLinesSums)
{
    EXPECT_EQ(operations_.addDetailToNewOrder(line("3", "\\100")), Outcome::Done);

    EXPECT_THAT(
        rows("SELECT Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_Address, OrdM_Tel, OrdM_Cel, OrdM_TakbaeMemo, OrdM_TaxTotal, "
             "OrdM_TaxFreeTotal, OrdM_HalinTotal, OrdM_Total, OrdM_Misugum, OrdM_ETCMemo FROM tPSOrderMaster"),
        ElementsAre("41|2026-11-24|1|서울시 종로구 1|02-123-4567|010-1234-5678||2700|0|300|2700|0|"));
    EXPECT_THAT(lines(), ElementsAre("1|1|1000|100|3|0"));
    EXPECT_EQ(session_.rsCustSaleMaster->value("OrdM_Total").value<runtime::Currency>(),
              runtime::Currency::fromWon(2700));
}

// The key of a new order is looked up by customer and date, so a second order of the day leaves the line on the first.
TEST_F(OrderFlow, ASecondOrderOfTheDayStaysWithoutTheLine)
{
    order("2026-11-24");
    session_.rsCustSaleMaster->Requery();
    EXPECT_EQ(operations_.addDetailToNewOrder(line("1")), Outcome::Done);
    EXPECT_THAT(orders(), ElementsAre("1|2026-11-24|1000", "2|2026-11-24|0"));
}

TEST_F(OrderFlow, QuantitiesAndDiscountsAreConvertedWhereTheLineIsWritten)
{
    const struct
    {
        EntryLine typed;
        Outcome onNewOrder;
        Outcome onSelected;
    } cases[] = {
        {line("32767"), Outcome::Done, Outcome::Done},
        {line("32768"), Outcome::Failed, Outcome::Failed},
        {line("-3"), Outcome::Done, Outcome::Done},
        {line(""), Outcome::Failed, Outcome::Failed},
        {line("-"), Outcome::Failed, Outcome::Failed},
        // A pure number for a new order, straight into currency for the selected one.
        {line("1", ""), Outcome::Done, Outcome::Failed},
        {line("1", "-\\2,000"), Outcome::Done, Outcome::Done},
        {line("1", "", 1), Outcome::Done, Outcome::Done},
    };
    order("2026-11-24");
    for (const auto &c : cases) {
        SCOPED_TRACE(qPrintable(c.typed.quantity + QLatin1Char('/') + c.typed.unitDiscount));
        session_.rsCustSaleMaster->Requery();
        const std::size_t before = lines().size();
        EXPECT_EQ(operations_.addDetailToSelectedOrder(operations_.currentOrder(), c.typed), c.onSelected);
        EXPECT_EQ(lines().size(), before + (c.onSelected == Outcome::Done));
        EXPECT_EQ(operations_.addDetailToNewOrder(c.typed), c.onNewOrder);
        EXPECT_EQ(lines().size(), before + (c.onSelected == Outcome::Done) + (c.onNewOrder == Outcome::Done));
        EXPECT_FALSE(gcnnMasterDB->inTransaction());
    }
    // Each try left its order, with or without a line.
    EXPECT_EQ(orders().size(), 1 + std::size(cases));
}

TEST_F(OrderFlow, OrdersOfADayAreCountedUpToTheLargestSmallNumber)
{
    EXPECT_EQ(operations_.countTodayOrders(), 0);
    order("2026-11-24");
    order("2026-11-23");
    order("2026-11-24", Patient + 1);
    EXPECT_EQ(operations_.countTodayOrders(), 1);
    atOtherDesk("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
                "SELECT i + 1 FROM n WHERE i < 40000) SELECT 41, '2026-11-24' FROM n");
    EXPECT_EQ(operations_.countTodayOrders(), 32767);
    gcnnMasterDB.reset();
    EXPECT_EQ(operations_.countTodayOrders(), -1);
}

TEST_F(OrderFlow, ATrappedErrorIsLoggedOnceWithTheKeysOfTheFlow)
{
    const ShownOrder gone{OrderKey(99), CustomerKey(Patient), {}};
    LogLines log;
    EXPECT_EQ(operations_.addDetailToSelectedOrder(gone, line("1")), Outcome::Conflict);
    EXPECT_EQ(operations_.addDetailToNewOrder(line("많이")), Outcome::Failed);
    const QStringList lines = log.take();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].contains("[add line order=99 product=1]")) << lines[0].toStdString();
    EXPECT_TRUE(lines[1].contains("[add line to new order product=1]")) << lines[1].toStdString();
}
