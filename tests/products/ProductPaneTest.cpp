#include "tests/support/SaleWindow.h"

#include "data/clsSQL.h"
#include "platform/print/VSPrinter.h"
#include "products/PriceList.h"
#include "settings/clsProperties.h"
#include "tests/support/DialogDriver.h"

using controls::Answer;

namespace {

constexpr std::initializer_list<const char *> panelControls = {
    "txtProSaleInfo_0", "txtProSaleInfo_1", "txtProSaleInfo_2", "txtProSaleInfo_3",
    "optIsTaxed_0",     "optIsTaxed_1",     "optIsValid_0",     "optIsValid_1"};

class ProductPaneTest : public SaleWindow
{
protected:
    /// 1 홍삼 with everything, 2 보리차 with nothing but its names, in this order on the list.
    void twoProducts() { runFile("products/two-products.sql"); }
    std::string panel()
    {
        return texts(panelControls) + ' '
               + at<QDateEdit>("dtpProdListAddedDate").date().toString(Qt::ISODate).toStdString();
    }
    Rows names() { return rows("SELECT PM_Catagory, PM_Name FROM tPSProductMaster ORDER BY PM_PK"); }
};

const char *const clearPanel = "||\\0||과세|-|취급|- 1900-01-01";

} // namespace

TEST_F(ProductPaneTest, ThePanelShowsTheCurrentProduct)
{
    twoProducts();
    manage();
    EXPECT_EQ(panel(), "가|홍삼|\\12,000|6년근|-|비과세|취급|- 2026-01-02");
    list("tdbSaleProductListsManager").moveTo(1); // no tax flag: the options stay as the row before left them
    EXPECT_EQ(panel(), "나|보리차|||-|비과세|-|취급안함 1900-01-01");
    EXPECT_TRUE(at("dtpProdListAddedDate").isEnabled()) << "the picker is live after a row was shown";

    atOtherDesk("DELETE FROM tPSProductMaster");
    list("tdbSaleProductListsManager").Requery();
    EXPECT_EQ(panel(), clearPanel);
    for (const char *command : {"chkCmdProdSaleAddEdiDel_1", "chkCmdProdSaleAddEdiDel_2"})
        push(command);
    EXPECT_THAT(boxes_.take(), IsEmpty()) << "edit and delete pass over an empty list";
    EXPECT_EQ(inEdit(), "");
    EXPECT_TRUE(at("sspPMProductList").isEnabled());
}

TEST_F(ProductPaneTest, TheListGoesOnPaperByCategoryAndIntoAFile)
{
    twoProducts();
    atOtherDesk(
        "INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsHide, PM_EtcMemo) VALUES ('가', "
        "'=녹용, 상', 7, 1, '한 \"줄\"')");
    manage();
    atOtherDesk("UPDATE tPSProductMaster SET PM_UnitPrice = 1234567 WHERE PM_PK = 1");
    std::string printed;
    EXPECT_TRUE(inDialog([&] { at<QAbstractButton>("cmdPrintProductList").click(); },
                         [&](const DialogDriver &dialog) {
                             const auto *preview = dialog.window()->findChild<print::VSPrinter *>();
                             for (const print::TextItem &text : preview->document().pages().at(0).texts)
                                 printed += text.text.toStdString() + '|';
                         }));
    EXPECT_THAT(printed,
                testing::HasSubstr("|[가]|=녹용, 상|7|한 \"줄\"|홍삼|1,234,567|비과세|취급|6년근|[나]|보리차|"));
    ado::Recordset products;
    products.Open(clsSQL().getProductMasterSQL(true), connection(), ado::CursorType::Static, ado::LockType::ReadOnly);
    EXPECT_EQ(priceListCsv(priceList(products)).toStdString(),
              "\xEF\xBB\xBF분류,물품명,판매단가(원),과세,취급여부,숨기기,메모,등록 날짜\r\n"
              "가,\"'=녹용, 상\",7,,,숨기기,\"한 \"\"줄\"\"\",\r\n"
              "가,홍삼,1234567,비과세,취급,,6년근,2026-01-02\r\n"
              "나,보리차,,,,,,\r\n");

    std::vector<PriceLine> many(100, PriceLine{"가", "감초차", "1500", {}, {}, {}, {}, {}});
    many.resize(150, PriceLine{"나", "보리차", {}, {}, {}, {}, {}, {}});
    const print::Document document = priceListOnPaper(many, "본점");
    ASSERT_EQ(document.pageCount(), 4);
    EXPECT_EQ(document.pages()[2].texts[6].text, "[가]"); // goes on
}

TEST_F(ProductPaneTest, ANewProductIsStoredOnceHoweverOftenSaveIsPressed)
{
    manage();
    push("chkCmdProdSaleAddEdiDel_0");
    EXPECT_EQ(panel(), clearPanel);
    for (int attempt = 0; attempt < 2; ++attempt) {
        at("txtProSaleInfo_1").setFocus();
        push("chkCmdSaveProduct_0");
        EXPECT_EQ(focused(), "txtProSaleInfo_0");
    }
    ASSERT_EQ(boxes_.messages.size(), 2u);
    EXPECT_EQ(boxes_.messages[0].text.toStdString(), "분류 또는 물품명이 비어있습니다");
    EXPECT_EQ(boxes_.messages[0].flags, 0);
    EXPECT_FALSE(gcnnMasterDB->inTransaction());
    EXPECT_EQ(inEdit(), "product");

    put("txtProSaleInfo_0", " 차 ");
    put("txtProSaleInfo_1", "감초차");
    put("txtProSaleInfo_2", "\\1,500");
    at<QAbstractButton>("optIsTaxed_1").click();
    push("chkCmdSaveProduct_0");
    EXPECT_THAT(
        rows("SELECT PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, PM_AddedDate FROM tPSProductMaster"),
        ElementsAre("차|감초차|1500|0|1|1900-01-01"));
    EXPECT_EQ(text("txtProSaleInfo_0"), "차") << "the list was read anew";

    push("chkCmdProdSaleAddEdiDel_0");
    push("chkCmdSaveProduct_0");
    push("chkCmdSaveProduct_1");
    EXPECT_EQ(names().size(), 1u);
    EXPECT_EQ(text("txtProSaleInfo_1"), "감초차");
    EXPECT_EQ(focused(), "tdbSaleProductListsManager");
    EXPECT_EQ(inEdit(), "");
}

TEST_F(ProductPaneTest, DeletingAsksAndTellsOfSoldProducts)
{
    twoProducts();
    detail(order("2026-11-24"), 1, 12000, 0, 1);
    manage();
    boxes_.answers = {Answer::No, Answer::Yes, Answer::Confirm, Answer::Yes};
    push("chkCmdProdSaleAddEdiDel_2");
    push("chkCmdProdSaleAddEdiDel_2");
    ASSERT_EQ(boxes_.messages.size(), 3u);
    EXPECT_EQ(boxes_.messages[0].flags, 68);
    EXPECT_THAT(
        boxes_.take(),
        ElementsAre(
            "물품목록삭제: 선택한 물품을 삭제 하시겠습니까?", "물품목록삭제: 선택한 물품을 삭제 하시겠습니까?",
            "물품목록삭제: 물품이 이미 판매 되었으므로 삭제 할 수 없습니다.\r\n   ('고객 판매 디테일'에서 삭제를 "
            "원하시는 물품을 모두 삭제하시면 \r\n    물품 삭제가 가능합니다.)"));
    list("tdbSaleProductListsManager").moveTo(1);
    push("chkCmdProdSaleAddEdiDel_2");
    EXPECT_THAT(names(), ElementsAre("가|홍삼"));
    EXPECT_EQ(rowsShown("tdbSaleProductLists"), 1) << "the sale list was read anew";

    boxes_.take();
    atOtherDesk("UPDATE tPSProductMaster SET PM_IsValid = 0");
    refuse("BEFORE DELETE ON tPSProductMaster");
    boxes_.answers = {Answer::Yes};
    push("chkCmdProdSaleAddEdiDel_2");
    EXPECT_THAT(boxes_.take(), ElementsAre("물품목록삭제: 선택한 물품을 삭제 하시겠습니까?",
                                           "판매 물품: 판매 물품 삭제를 하지 못했습니다."));
    EXPECT_THAT(names(), ElementsAre("가|홍삼"));
    EXPECT_FALSE(gcnnMasterDB->inTransaction());
    allowAgain();
    boxes_.answers = {Answer::Yes};
    push("chkCmdProdSaleAddEdiDel_2");
    EXPECT_THAT(names(), IsEmpty()) << "sold, but no longer handled";
}

TEST_F(ProductPaneTest, TheCheckColumnHidesAtOnceButTheRowStaysInView)
{
    twoProducts();
    clsProperties().PropValue("숨기기체크된판매물품목록감추기", QStringLiteral("1"));
    manage();
    const QString hidden = QStringLiteral("SELECT PM_IsHide FROM tPSProductMaster ORDER BY PM_PK");
    clickCell("tdbSaleProductListsManager", 0, 0);
    EXPECT_THAT(rows(hidden), ElementsAre("1", "NULL"));
    EXPECT_EQ(rowsShown("tdbSaleProductListsManager"), 2);

    pane<ProductPane>().loadProductListsManager();
    EXPECT_EQ(rowsShown("tdbSaleProductListsManager"), 1);
}
