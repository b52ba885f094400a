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

TEST_F(OrderFlow, AnOrderIsToldByItsKeyAndNoneWhereThereIsNone)
{
    EXPECT_FALSE(operations_.currentOrder());
    order("2026-11-24");
    order("2026-11-23");
    atOtherDesk("UPDATE tPSOrderMaster SET OrdM_Total = OrdM_PK * 1000");
    session_.rsCustSaleMaster->Requery();
    const char *totals[] = {"-", "₩1,000", "₩2,000", "-"};
    for (int key = 0; key < 4; ++key)
        EXPECT_EQ(operations_.totalShown(OrderKey(key)).toStdString(), totals[key]) << key;
}

TEST_F(OrderFlow, ListsThatMayBeStaleAreReadBeforeALineIsAdded)
{
    int ordersShown = 0;
    for (const bool mayBeStale : {false, true, true}) {
        order("2026-11-24"); // saved as the server was lost, or by another desk
        session_.linesMayBeStale = mayBeStale;
        EXPECT_EQ(operations_.foundChangedAfterLoss(), mayBeStale);
        ordersShown = mayBeStale ? session_.rsCustSaleMaster->rowCount() : ordersShown;
        EXPECT_EQ(session_.rsCustSaleMaster->rowCount(), ordersShown);
        EXPECT_FALSE(session_.linesMayBeStale);
        EXPECT_FALSE(operations_.foundChangedAfterLoss()) << "told once";
    }
    EXPECT_EQ(ordersShown, 3);
}

TEST_F(OrderFlow, AnOrderIsDeletedUnlessItsLinesAreNotThoseThatAreShown)
{
    const struct
    {
        const char *what;
        std::function<void(int)> show;
        Outcome outcome;
    } cases[] = {
        {"no list", [this](int) { session_.rsCustSaleDetails.reset(); }, Outcome::Done},
        {"the lines of another order",
         [this](int) { openRows(session_.rsCustSaleDetails, clsSQL().getOrderDetailSQL(-1)); }, Outcome::Done},
        {"its lines", [this](int key) { openRows(session_.rsCustSaleDetails, clsSQL().getOrderDetailSQL(key)); },
         Outcome::Done},
        {"its lines before the last came",
         [this](int key) {
             openRows(session_.rsCustSaleDetails, clsSQL().getOrderDetailSQL(key));
             detail(key, 1, 1000, 0, 1);
         },
         Outcome::Conflict},
    };
    for (const auto &c : cases) {
        const int key = order("2026-11-24");
        detail(key, 1, 1000, 0, 2);
        session_.rsCustSaleMaster->Requery();
        c.show(key);
        EXPECT_EQ(operations_.deleteOrder({OrderKey(key), CustomerKey(Patient), today()}), c.outcome) << c.what;
        EXPECT_EQ(lines().empty(), c.outcome == Outcome::Done) << c.what;
    }
}

TEST_F(OrderFlow, ALineIsSavedOnlyWhereTheSumsThatItMakesFit)
{
    atOtherDesk("UPDATE tPSProductMaster SET PM_UnitPrice = 900000000000000");
    const struct
    {
        int taxed;
        const char *quantity, *discount;
        Outcome outcome;
    } cases[] = {
        {1, "1", "0", Outcome::Done},
        {1, "2", "0", Outcome::Failed},
        {0, "1", "500000000000000", Outcome::Done},
        {0, "1", "-500000000000000", Outcome::Failed},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.quantity + std::string("/") + c.discount);
        atOtherDesk("DELETE FROM tPSOrderDetail");
        atOtherDesk(QStringLiteral("UPDATE tPSProductMaster SET PM_IsTaxed = %1").arg(c.taxed));
        openAll();
        EXPECT_EQ(operations_.addDetailToSelectedOrder({OrderKey(order("2026-11-24")), CustomerKey(Patient), today()},
                                                       line(c.quantity, c.discount)),
                  c.outcome);
        EXPECT_EQ(lines().empty(), c.outcome == Outcome::Failed);
    }
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
