#include "tests/products/ProductDesk.h"

#include "platform/controls/Appearance.h"
#include "settings/clsProperties.h"

using controls::Answer;

namespace {

constexpr std::initializer_list<const char *> panelControls = {
    "txtProSaleInfo_0", "txtProSaleInfo_1", "txtProSaleInfo_2", "txtProSaleInfo_3",
    "optIsTaxed_0",     "optIsTaxed_1",     "optIsValid_0",     "optIsValid_1"};

class ProductPaneTest : public ProductDesk
{
protected:
    /// 1 홍삼 with everything, 2 보리차 with nothing but its names, in this order on the list.
    void twoProducts()
    {
        atOtherDesk("INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, "
                    "PM_EtcMemo, PM_AddedDate) VALUES ('가', '홍삼', 12000, 0, 1, '6년근', '2026-01-02')");
        atOtherDesk("INSERT INTO tPSProductMaster (PM_Catagory, PM_Name) VALUES ('나', '보리차')");
    }
    std::string panel()
    {
        return window().texts(panelControls) + ' '
               + window().at<QDateEdit>("dtpProdListAddedDate").date().toString(Qt::ISODate).toStdString();
    }
    Rows names() { return rows("SELECT PM_Catagory, PM_Name FROM tPSProductMaster ORDER BY PM_PK"); }
    QColor backColor(const char *name) { return controls::backColor(&window().at(name)); }
};

const char *const clearPanel = "||\\0||과세|-|취급|- 1900-01-01";

} // namespace

TEST_F(ProductPaneTest, ThePanelShowsTheCurrentProduct)
{
    twoProducts();
    open();
    EXPECT_EQ(panel(), "가|홍삼|\\12,000|6년근|-|비과세|취급|- 2026-01-02");
    list().moveTo(1); // no tax flag: the options stay as the row before left them
    EXPECT_EQ(panel(), "나|보리차|||-|비과세|-|취급안함 1900-01-01");
    EXPECT_TRUE(window().at("dtpProdListAddedDate").isEnabled()) << "the picker is live after a row was shown";

    atOtherDesk("DELETE FROM tPSProductMaster");
    list().Requery();
    EXPECT_EQ(panel(), clearPanel);
    for (const char *command : {"chkCmdProdSaleAddEdiDel_1", "chkCmdProdSaleAddEdiDel_2"})
        window().push(command);
    EXPECT_THAT(boxes_.take(), IsEmpty()) << "edit and delete pass over an empty list";
    EXPECT_EQ(window().products->intProductEditMode(), 1);
    EXPECT_TRUE(window().at("sspPMProductList").isEnabled());
}

TEST_F(ProductPaneTest, AnEditPutsTheRestOutOfReachAndPaintsWhatMustBeFilled)
{
    twoProducts();
    open();
    window().push("chkCmdProdSaleAddEdiDel_1");
    using controls::SystemColor;
    EXPECT_EQ(window().focused(), "txtProSaleInfo_0");
    EXPECT_EQ(window().at<QLineEdit>("txtProSaleInfo_0").selectedText().toStdString(), "가");

    window().type("txtProSaleInfo_1", "산삼");
    window().push("chkCmdSaveProduct_1");
    EXPECT_EQ(panel(), "가|홍삼|\\12,000|6년근|-|비과세|취급|- 2026-01-02");
    EXPECT_EQ(backColor("txtIncCount"), controls::systemColor(SystemColor::InfoBackground));
    EXPECT_EQ(window().focused(), "tdbSaleProductListsManager");
    EXPECT_EQ(window().products->intProductEditMode(), -1);
}

TEST_F(ProductPaneTest, ANewProductIsStoredOnceHoweverOftenSaveIsPressed)
{
    open();
    window().push("chkCmdProdSaleAddEdiDel_0");
    EXPECT_EQ(panel(), clearPanel);
    for (int attempt = 0; attempt < 2; ++attempt) {
        window().at("txtProSaleInfo_1").setFocus();
        window().push("chkCmdSaveProduct_0");
        EXPECT_EQ(window().focused(), "txtProSaleInfo_0");
    }
    ASSERT_EQ(boxes_.boxes.size(), 2u);
    EXPECT_EQ(boxes_.boxes[0].text.toStdString(), "분류 또는 물품명이 비어있습니다");
    EXPECT_EQ(boxes_.boxes[0].flags, 0);
    EXPECT_FALSE(gcnnMasterDB->inTransaction());
    EXPECT_EQ(window().products->intProductEditMode(), 0);

    window().type("txtProSaleInfo_0", " 차 ");
    window().type("txtProSaleInfo_1", "감초차");
    window().type("txtProSaleInfo_2", "\\1,500");
    window().at<QAbstractButton>("optIsTaxed_1").click();
    window().push("chkCmdSaveProduct_0");
    EXPECT_THAT(
        rows("SELECT PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, PM_AddedDate FROM tPSProductMaster"),
        ElementsAre("차|감초차|1500|0|1|1900-01-01"));
    EXPECT_EQ(window().text("txtProSaleInfo_0"), "차") << "the list was read anew";

    window().push("chkCmdProdSaleAddEdiDel_0");
    window().push("chkCmdSaveProduct_0");
    window().push("chkCmdSaveProduct_1");
    EXPECT_EQ(names().size(), 1u);
    EXPECT_EQ(window().text("txtProSaleInfo_1"), "감초차");
}

TEST_F(ProductPaneTest, ASaveThatFailsIsToldAndEndsTheEdit)
{
    twoProducts();
    open();
    refuse("BEFORE UPDATE ON tPSProductMaster");
    window().push("chkCmdProdSaleAddEdiDel_1");
    window().type("txtProSaleInfo_1", "산삼");
    window().push("chkCmdSaveProduct_0");
    EXPECT_THAT(boxes_.take(), ElementsAre("저장: 저장을 하지 못했습니다. 서버와의 연결을 확인하십시오."));
    EXPECT_THAT(names(), ElementsAre("가|홍삼", "나|보리차"));
    EXPECT_EQ(window().text("txtProSaleInfo_1"), "홍삼");
    EXPECT_TRUE(window().at("sspPMProductList").isEnabled());
    EXPECT_FALSE(gcnnMasterDB->inTransaction());
}

TEST_F(ProductPaneTest, DeletingAsksAndTellsOfSoldProducts)
{
    twoProducts();
    detail(order("2026-11-24"), 1, 12000, 0, 1);
    open();
    session_.rsSaleProductLists = std::make_unique<ado::Recordset>();
    session_.rsSaleProductLists->Open(QStringLiteral("SELECT * FROM tPSProductMaster"), gcnnMasterDB,
                                      ado::CursorType::Static, ado::LockType::ReadOnly);
    boxes_.answers = {Answer::No, Answer::Yes, Answer::Confirm, Answer::Yes};
    window().push("chkCmdProdSaleAddEdiDel_2");
    window().push("chkCmdProdSaleAddEdiDel_2");
    ASSERT_EQ(boxes_.boxes.size(), 3u);
    EXPECT_EQ(boxes_.boxes[0].flags, 68);
    EXPECT_THAT(
        boxes_.take(),
        ElementsAre(
            "물품목록삭제: 선택한 물품을 삭제 하시겠습니까?", "물품목록삭제: 선택한 물품을 삭제 하시겠습니까?",
            "물품목록삭제: 물품이 이미 판매 되었으므로 삭제 할 수 없습니다.\r\n   ('고객 판매 디테일'에서 삭제를 "
            "원하시는 물품을 모두 삭제하시면 \r\n    물품 삭제가 가능합니다.)"));
    list().moveTo(1);
    window().push("chkCmdProdSaleAddEdiDel_2");
    EXPECT_THAT(names(), ElementsAre("가|홍삼"));
    EXPECT_EQ(session_.rsSaleProductLists->rowCount(), 1) << "the sale list was read anew";

    boxes_.take();
    atOtherDesk("UPDATE tPSProductMaster SET PM_IsValid = 0");
    refuse("BEFORE DELETE ON tPSProductMaster");
    boxes_.answers = {Answer::Yes};
    window().push("chkCmdProdSaleAddEdiDel_2");
    EXPECT_THAT(boxes_.take(), ElementsAre("물품목록삭제: 선택한 물품을 삭제 하시겠습니까?",
                                           "판매 물품: 판매 물품 삭제를 하지 못했습니다."));
    EXPECT_THAT(names(), ElementsAre("가|홍삼"));
    EXPECT_FALSE(gcnnMasterDB->inTransaction());
    allowAgain();
    boxes_.answers = {Answer::Yes};
    window().push("chkCmdProdSaleAddEdiDel_2");
    EXPECT_THAT(names(), IsEmpty()) << "sold, but no longer handled";
}

TEST_F(ProductPaneTest, TheCheckColumnHidesAtOnceButTheRowStaysInView)
{
    twoProducts();
    clsProperties().PropValue("숨기기체크된판매물품목록감추기", QStringLiteral("1"));
    open();
    auto &grid = window().at<QTableView>("tdbSaleProductListsManager");
    const auto clickCheck = [&] {
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(grid.model()->index(0, 0)).center());
    };
    const QString hidden = QStringLiteral("SELECT PM_IsHide FROM tPSProductMaster ORDER BY PM_PK");
    clickCheck();
    EXPECT_THAT(rows(hidden), ElementsAre("1", "NULL"));
    EXPECT_EQ(grid.model()->rowCount(), 2);

    window().products->loadProductListsManager();
    EXPECT_EQ(grid.model()->rowCount(), 1);
}

TEST_F(ProductPaneTest, AListLoadedAnewBeneathAnEditLeavesTheEditAsItIs)
{
    twoProducts();
    open();
    list().moveTo(1);
    window().push("chkCmdProdSaleAddEdiDel_1");
    window().type("txtProSaleInfo_1", "옥수수차");
    window().products->loadProductListsManager(true);
    EXPECT_EQ(window().text("txtProSaleInfo_1"), "옥수수차");
    window().push("chkCmdSaveProduct_0");
    EXPECT_THAT(names(), ElementsAre("가|홍삼", "나|옥수수차"));

    // A new customer comes: nothing of the edit is saved, nothing of it stays.
    window().push("chkCmdProdSaleAddEdiDel_0");
    window().type("txtProSaleInfo_0", "x");
    window().products->abandonEdit();
    EXPECT_EQ(window().text("txtProSaleInfo_0"), "가");
    EXPECT_TRUE(window().at("chkCmdSaveProduct_0").isHidden());
}
