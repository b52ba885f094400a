#include "sales/RefundOperations.h"

#include "data/clsSQL.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/support/SaleDatabase.h"

using runtime::Currency;

namespace {

/// Order 1 of the 20th with one line, 3 of 홍삼 at 1,000 less 100, which is current.
class LineTakenBack : public SaleDatabase
{
protected:
    LineTakenBack()
    {
        const int ginseng = product("홍삼", 1200);
        detail(order("2026-11-20"), ginseng, 1000, 100, 3);
        openAll();
    }

    /// The line, current on the order that it stands on.
    void openAll(int order = 1)
    {
        openRows(session_.rsCustSaleMaster, clsSQL().getOrderMasterSQL(Patient));
        session_.rsCustSaleMaster->setBookmark(order);
        openRows(session_.rsCustSaleDetails, clsSQL().getOrderDetailSQL(order));
        session_.rsCustSaleDetails->setBookmark(1);
    }
    Outcome takeBack(int count, const char *date, const char *memo = "")
    {
        openAll();
        const Refund refund{qint16(count), QDate::fromString(QLatin1String(date), Qt::ISODate), QString::fromUtf8(memo),
                            Currency::fromWon(850)};
        return operations_.takeBack(operations_.currentLine(), refund);
    }

    Rows orders() { return rows("SELECT OrdM_PK, OrdM_Date, OrdM_Total FROM tPSOrderMaster ORDER BY OrdM_PK"); }
    Rows lines()
    {
        return rows("SELECT OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType "
                    "FROM tPSOrderDetail ORDER BY OrdD_PK");
    }
    Rows notes() { return rows("SELECT OrdD_RfndMemo FROM tPSOrderDetail ORDER BY OrdD_PK"); }

    RefundOperations operations_{session_};
};

constexpr const char *soldLine = "1|1|1000|100|3|0";

} // namespace

TEST_F(LineTakenBack, AnOrderThatIsMadeForTheRowTakesTheCustomersDeliveryDataAndNoDiscount)
{
    EXPECT_EQ(takeBack(-1, "2026-11-24"), Outcome::Done);
    EXPECT_THAT(lines(), ElementsAre(soldLine, "2|1|850|0|-1|NULL"));
    EXPECT_THAT(rows("SELECT OrdM_HalinTotal FROM tPSOrderMaster WHERE OrdM_PK = 2"), ElementsAre("0"));
    EXPECT_THAT(rows("SELECT Cust_PK, OrdM_Address, OrdM_Tel, OrdM_Cel FROM tPSOrderMaster WHERE OrdM_PK = 2"),
                ElementsAre("41|서울시 종로구 1|02-123-4567|010-1234-5678"));
}

TEST_F(LineTakenBack, OfSeveralOrdersOfADateTheFirstTakesTheRowEvenIfTheLineStandsOnAnother)
{
    const int second = order("2026-11-20");
    atOtherDesk(QStringLiteral("UPDATE tPSOrderDetail SET OrdM_PK = %1").arg(second));
    openAll(second);
    EXPECT_EQ(operations_.takeBack(operations_.currentLine(), {-3, QDate(2026, 11, 20), {}, Currency::fromWon(900)}),
              Outcome::Done);
    EXPECT_THAT(lines(), ElementsAre("2|1|1000|100|3|0", "1|1|900|0|-3|NULL"));
}

TEST_F(LineTakenBack, BothLinesTellOfItAndPartsAddUp)
{
    EXPECT_EQ(takeBack(-1, "2026-11-20", "포장 불량"), Outcome::Done);
    EXPECT_EQ(operations_.currentLine().count, 3) << "the sold quantity stays";
    EXPECT_EQ(takeBack(-2, "2026-11-24"), Outcome::Done);
    const std::string sold =
        "▷판매날짜(2026-11-20), 물품이름(홍삼), 개당가격(1000), 갯수(3), 할인가격(100) 의(중) 반품. 메모: ";
    EXPECT_THAT(notes(), ElementsAre("▶2026-11-20일 (-1)개 반품\n▶2026-11-24일 (-2)개 반품", sold + "포장 불량", sold));
}

TEST_F(LineTakenBack, TheNoteStaysWhenTheRowCannotBeAdded)
{
    const std::string note = "▶2026-11-24일 (-1)개 반품";
    // A quote goes out as it is and breaks the statement; the order of that day has been made by then.
    EXPECT_EQ(takeBack(-1, "2026-11-24", "it's"), Outcome::Failed);
    EXPECT_THAT(orders(), ElementsAre("1|2026-11-20|0", "2|2026-11-24|0"));
    EXPECT_THAT(lines(), ElementsAre(soldLine));
    EXPECT_THAT(notes(), ElementsAre(note));
    EXPECT_FALSE(gcnnMasterDB->inTransaction());

    // The sale's order is another customer's by now: no row may hang on it, and no note.
    openAll();
    const SoldLine sold = operations_.currentLine();
    atOtherDesk("UPDATE tPSOrderMaster SET Cust_PK = 42");
    EXPECT_EQ(operations_.takeBack(sold, {-1, sold.order.date, {}, Currency::fromWon(900)}), Outcome::Conflict);
    EXPECT_THAT(lines(), ElementsAre(soldLine));
    EXPECT_THAT(notes(), ElementsAre(note));
}

// The order stays behind without its line and is the current one: what is on show must belong to it.
TEST_F(LineTakenBack, AnOrderMadeInVainIsShownWithItsOwnLines)
{
    int rowChanges = 0;
    QObject::connect(session_.rsCustSaleMaster.get(), &ado::Recordset::rowChanged, session_.rsCustSaleMaster.get(),
                     [&] { ++rowChanges; });
    refuse("BEFORE INSERT ON tPSOrderDetail");
    const SoldLine sold = operations_.currentLine();
    EXPECT_EQ(operations_.takeBack(sold, {-1, QDate(2026, 11, 24), {}, Currency::fromWon(900)}), Outcome::Failed);
    EXPECT_EQ(session_.rsCustSaleMaster->value("OrdM_PK").toInt(), 2);
    EXPECT_EQ(rowChanges, 1);
}
