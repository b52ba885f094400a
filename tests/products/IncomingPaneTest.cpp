#include "tests/support/SaleWindow.h"

#include "platform/controls/Appearance.h"

using controls::Answer;

namespace {

class IncomingPaneTest : public SaleWindow
{
protected:
    IncomingPaneTest()
    {
        product("가시오갈피", 1000);
        product("나복자", 1000);
        atOtherDesk("INSERT INTO tPSCompanyMaster (CM_Name) VALUES ('한약방'), ('제일약초')");
    }
    void purchase(int productKey, int dealer, const char *count)
    {
        atOtherDesk(
            QStringLiteral("INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Date, IN_Count, IN_UnitPrice, IN_HalinTotal, "
                           "IN_Total, IN_EtcMemo) VALUES (%1, %2, '2026-11-20', %3, 1000, 500, 2500, '외상')")
                .arg(productKey)
                .arg(dealer)
                .arg(QLatin1String(count)));
    }
    std::string panel()
    {
        return texts({"txtIncCount", "txtIncPricePerUnit", "txtIncHalinTotal", "txtIncPriceTotal", "txtIncCompanyName",
                      "txtIncMemo"})
               + ' ' + at<QDateEdit>("dtpIncDate").date().toString(Qt::ISODate).toStdString();
    }
    std::string stock()
    {
        return texts({"txtProdStat_0", "txtProdStat_1", "txtProdStat_2", "txtProdStat_3", "txtProdStat_4"});
    }
    Rows purchases() { return rows("SELECT PM_PK, CM_PK, IN_Count, IN_Total FROM tPSIncoming ORDER BY IN_PK"); }
    static std::string clearPanel()
    {
        return "1|\\0|\\0|\\0|| " + QDate::currentDate().toString(Qt::ISODate).toStdString();
    }
};

} // namespace

TEST_F(IncomingPaneTest, ThePanelShowsThePurchasesOfTheProduct)
{
    purchase(1, 2, "3");
    atOtherDesk("INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Date) VALUES (1, 99, '2026-11-01')");
    manage();
    EXPECT_EQ(panel(), "3|\\1,000|\\500|\\2,500|제일약초|외상 2026-11-20");
    list("tdbProductIncoming").moveTo(1); // a dealer who is gone, and no numbers
    EXPECT_EQ(panel(), "0|\\0|\\0|\\0|| 2026-11-01");
    list("tdbSaleProductListsManager").moveTo(1);
    EXPECT_EQ(panel(), clearPanel());
}

TEST_F(IncomingPaneTest, TheTotalFollowsItsParts)
{
    manage();
    push("chkcmdIncomingAED_0");
    const struct
    {
        const char *count, *price, *discount, *total;
    } cases[] = {
        {"3", "\\1,000", "\\500", "\\2,500"},
        {"1", "\\1,000", "\\5,000", "-\\4,000"},
        {"개", "\\1,000", "\\0", "\\0"},
        {"2개", "\\1,000", "\\0", "\\2,000"},
        {"", "\\1,000", "\\100", "-\\100"},
        {"1,000", "\\999,999", "\\0", "\\999,999,000"},
        {"1000", "\\9,999,999", "\\0",
         "\\999,999,900"}, // beyond nine characters the rest is cut, as in every money box
    };
    const QColor red = controls::ink(controls::Ink::Negative);
    for (const auto &row : cases) {
        put("txtIncCount", row.count);
        put("txtIncPricePerUnit", row.price);
        put("txtIncHalinTotal", row.discount);
        EXPECT_EQ(text("txtIncPriceTotal"), row.total) << row.count;
        EXPECT_EQ(controls::foreColor(&at("txtIncPriceTotal")) == red, *row.total == '-') << row.count;
    }
    EXPECT_TRUE(at<QLineEdit>("txtIncPriceTotal").isReadOnly());
}

TEST_F(IncomingPaneTest, TheStepperStopsAtNothingOnTheWayDown)
{
    manage();
    push("chkcmdIncomingAED_0");
    const struct
    {
        const char *typed, *button, *count;
    } cases[] = {
        {"1", "udIincomingCount_down", "0"},        {"0", "udIincomingCount_down", "0"},
        {"0.5", "udIincomingCount_down", "-0.5"},   {"-3", "udIincomingCount_down", "-3"},
        {"-3", "udIincomingCount_up", "-2"},        {"많이", "udIincomingCount_up", "1"},
        {"99999", "udIincomingCount_up", "100000"},
    };
    for (const auto &row : cases) {
        put("txtIncCount", row.typed);
        push(row.button);
        EXPECT_EQ(text("txtIncCount"), row.count) << row.typed;
    }
}

TEST_F(IncomingPaneTest, APurchaseNeedsAProductAndADealer)
{
    atOtherDesk("DELETE FROM tPSProductMaster");
    manage();
    push("chkcmdIncomingAED_0");
    EXPECT_THAT(boxes_.take(), ElementsAre("물품구매내역추가: 판매 물품 목록을 추가 하십시오"));
    EXPECT_EQ(inEdit(), "");

    product("감초", 1000);
    list("tdbSaleProductListsManager").Requery();
    push("chkcmdIncomingAED_0");
    EXPECT_EQ(focused(), "txtIncCount");
    push("chkcmdIncomingSave_0");
    EXPECT_THAT(boxes_.take(), ElementsAre("물품구매내역: 거래처를 선택하십시오."));
    EXPECT_EQ(focused(), "txtIncCompanyName");
    pane<IncomingPane>().insFrmCompanySelect_evtDealerSelected(2, QStringLiteral("제일약초"));
    put("txtIncCount", "4");
    put("txtIncPricePerUnit", "\\250");
    push("chkcmdIncomingSave_0");
    EXPECT_THAT(purchases(), ElementsAre("3|2|4|1000"));
    EXPECT_EQ(focused(), "tdbProductIncoming");
    EXPECT_EQ(inEdit(), "");

    push("chkcmdIncomingAED_0"); // a new purchase begins without the dealer of the last one
    push("chkcmdIncomingSave_0");
    EXPECT_THAT(boxes_.take(), ElementsAre("물품구매내역: 거래처를 선택하십시오."));
}

// The key of the dealer is not read from the row: whoever edits chooses the dealer again, or keeps the one chosen last.
TEST_F(IncomingPaneTest, AnEditTakesTheDealerChosenLastInThePanel)
{
    purchase(1, 2, "3");
    manage();
    push("chkcmdIncomingAED_1");
    EXPECT_EQ(text("txtIncCompanyName"), "제일약초");
    push("chkcmdIncomingSave_0");
    EXPECT_THAT(boxes_.take(), ElementsAre("물품구매내역: 거래처를 선택하십시오."));
    pane<IncomingPane>().insFrmCompanySelect_evtDealerSelected(1, QStringLiteral("한약방"));
    push("chkcmdIncomingSave_1");
    EXPECT_EQ(text("txtIncCompanyName"), "제일약초");

    push("chkcmdIncomingAED_1");
    push("chkcmdIncomingSave_0");
    EXPECT_THAT(boxes_.take(), IsEmpty());
    EXPECT_THAT(purchases(), ElementsAre("1|1|3|2500"));
}

TEST_F(IncomingPaneTest, TheProductListLoadedAnewDoesNotMoveAPurchaseToAnotherProduct)
{
    manage();
    list("tdbSaleProductListsManager").moveTo(1);
    push("chkcmdIncomingAED_0");
    pane<IncomingPane>().insFrmCompanySelect_evtDealerSelected(1, QStringLiteral("한약방"));
    pane<ProductPane>().loadProductListsManager(true);
    EXPECT_EQ(text("txtIncCompanyName"), "한약방");
    EXPECT_EQ(text("txtProSaleInfo_1"), "나복자");
    push("chkcmdIncomingSave_0");
    EXPECT_THAT(purchases(), ElementsAre("2|1|1|0"));

    // The product of the edit goes from the list meanwhile: the purchases of the one on view come when the edit ends.
    purchase(1, 2, "9");
    push("chkcmdIncomingAED_1");
    atOtherDesk("DELETE FROM tPSProductMaster WHERE PM_PK = 2");
    pane<ProductPane>().loadProductListsManager(true);
    put("txtIncCount", "5");
    push("chkcmdIncomingSave_0");
    EXPECT_THAT(purchases(), ElementsAre("2|1|5|0", "1|2|9|2500"));
    EXPECT_EQ(text("txtIncCount"), "9");
}

TEST_F(IncomingPaneTest, StockIsStaleUntilItIsAskedForAgain)
{
    purchase(1, 1, "10");
    const int sale = order("2026-11-24");
    for (const char *kindAndCount : {"0, 4", "NULL, -1", "1, 1", "2, 2"})
        atOtherDesk(
            QStringLiteral("INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_OrderType, OrdD_Count) VALUES (%1, 1, %2)")
                .arg(sale)
                .arg(QLatin1String(kindAndCount)));
    manage();
    EXPECT_EQ(stock(), "10|3|4|1|2");
    boxes_.answers = {Answer::No, Answer::Yes};
    push("chkcmdIncomingAED_2");
    EXPECT_EQ(purchases().size(), 1u);
    push("chkcmdIncomingAED_2");
    EXPECT_THAT(boxes_.take(),
                ElementsAre("삭제: 물품 구매내역을 삭제 하시겠습니까?", "삭제: 물품 구매내역을 삭제 하시겠습니까?"));
    EXPECT_THAT(purchases(), IsEmpty());
    EXPECT_EQ(stock(), "10|3|4|1|2");
    push("cmdRefreshProdStat");
    EXPECT_EQ(stock(), "0|3|-6|1|2");
    list("tdbSaleProductListsManager").moveTo(1);
    EXPECT_EQ(stock(), "0|0|0|0|0");

    list("tdbSaleProductListsManager").moveTo(0);
    atOtherDesk("DELETE FROM tPSProductMaster");
    list("tdbSaleProductListsManager").Requery();
    push("cmdRefreshProdStat");
    EXPECT_EQ(boxes_.take().size(), 1u) << "on an empty list the error is told and nothing else happens";
    EXPECT_EQ(stock(), "0|3|-6|1|2");
}

TEST_F(IncomingPaneTest, AStockBeyondItsNumbersKeepsWhatItShowed)
{
    manage();
    EXPECT_EQ(stock(), "0|0|0|0|0");
    purchase(1, 1, "3000000000");
    push("cmdRefreshProdStat");
    EXPECT_EQ(stock(), "0|0|0|0|0");

    // Each figure fits, but not what is to be taken off, though the remainder would.
    atOtherDesk("UPDATE tPSIncoming SET IN_Count = 2000000000");
    atOtherDesk("PRAGMA ignore_check_constraints = ON"); // in place of a hundred thousand lines
    for (const char *kind : {"0", "2"})
        atOtherDesk(
            QStringLiteral("INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_OrderType, OrdD_Count) VALUES (1, 1, %1, "
                           "2000000000)")
                .arg(QLatin1String(kind)));
    push("cmdRefreshProdStat");
    EXPECT_EQ(stock(), "2000000000|2000000000|0|0|2000000000");
    EXPECT_THAT(boxes_.take(), IsEmpty());
}

TEST_F(IncomingPaneTest, AQuantityOfMoreThanNineDigitsIsNotStored)
{
    manage();
    push("chkcmdIncomingAED_0");
    pane<IncomingPane>().insFrmCompanySelect_evtDealerSelected(1, QStringLiteral("한약방"));
    for (const char *typed :
         {"8801234567890", "0000012345678", " -1234567890", "1234567890.5", "8801234567890개", "1e12"}) {
        put("txtIncCount", typed);
        push("chkcmdIncomingSave_0");
        EXPECT_THAT(boxes_.take(),
                    ElementsAre("물품구매내역: 구매수량이 9자리를 넘어 저장하지 않았습니다. 구매수량을 다시 "
                                "입력하십시오."))
            << typed;
        EXPECT_EQ(inEdit(), "purchase") << typed;
        EXPECT_EQ(focused(), "txtIncCount");
    }
    EXPECT_THAT(purchases(), IsEmpty());
    for (const char *typed : {"123456789", "-123456789.25", "12개 8801234567890", "0.1234567891"}) {
        put("txtIncCount", typed);
        push("chkcmdIncomingSave_0");
        push("chkcmdIncomingAED_0");
        pane<IncomingPane>().insFrmCompanySelect_evtDealerSelected(1, QStringLiteral("한약방"));
    }
    EXPECT_THAT(rows("SELECT IN_Count FROM tPSIncoming ORDER BY IN_PK"),
                ElementsAre("123456789", "-123456789.25", "12", "0.1234567891"));
}

TEST_F(IncomingPaneTest, APurchaseIsEditedWithoutAProductOnTheList)
{
    purchase(1, 2, "3");
    manage();
    pane<IncomingPane>().insFrmCompanySelect_evtDealerSelected(1, QStringLiteral("한약방"));
    atOtherDesk("DELETE FROM tPSProductMaster");
    list("tdbSaleProductListsManager").Requery();
    push("chkcmdIncomingAED_1");
    EXPECT_EQ(inEdit(), "purchase");
    put("txtIncCount", "4");
    push("chkcmdIncomingSave_0");
    EXPECT_THAT(boxes_.take(), IsEmpty());
    EXPECT_THAT(purchases(), ElementsAre("1|1|4|3500"));
}
