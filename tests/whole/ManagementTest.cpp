#include "tests/whole/SaleDesk.h"

#include <QTabWidget>

namespace {

class Management : public testing::TestWithParam<ado::Engine>
{
protected:
    void openEmptyShop()
    {
        desk_.database.run("DELETE FROM tPSProductMaster");
        desk_.open();
    }
    void goTo(int tab)
    {
        desk_.control<QTabWidget>("c1tabMain")->setCurrentIndex(tab);
        walk::settle();
    }
    std::string saidSoFar()
    {
        const std::string said = desk_.boxes.texts().join(u'\n').toStdString();
        desk_.boxes.messages.clear();
        return said;
    }
    void addProduct(const char *name, const char *price)
    {
        desk_.click("chkCmdProdSaleAddEdiDel_0");
        desk_.type("txtProSaleInfo_0", "tea");
        desk_.type("txtProSaleInfo_1", name);
        desk_.type("txtProSaleInfo_2", price);
        desk_.click("chkCmdSaveProduct_0");
    }

    SaleDesk desk_{GetParam()};
};

} // namespace

TEST_P(Management, AShopIsSetUpFromNothingAndSells)
{
    openEmptyShop();
    goTo(1);
    desk_.click("chkcmdCmpnyMstrAED_0");
    desk_.type("txtCmCompanyName", "Acme");
    desk_.click("chkcmdCmpnyMstrSave_0");
    addProduct("ginger", "1500");
    desk_.click("chkcmdIncomingAED_0");
    desk_.type("txtIncCount", "12");
    desk_.type("txtIncPricePerUnit", "900");
    desk_.actor.inModalWindow([&] { desk_.click("chkCmdIncSelectCompany"); },
                              [&](QWidget *dialog) { desk_.actor.press(dialog, Qt::Key_F12); });
    desk_.click("chkcmdIncomingSave_0");
    desk_.click("cmdRefreshProdStat");
    EXPECT_EQ(desk_.text("txtProdStat_0").toStdString(), "12");
    EXPECT_EQ(desk_.joined("SELECT PM_PK, CM_PK, IN_Count, IN_Total FROM tPSIncoming").substr(1), "|1|12|10800");

    goTo(3);
    desk_.type("txtProperties_0", "Main street");
    desk_.click("chkCmdSaveProperties");
    goTo(0);
    EXPECT_EQ(desk_.grid("tdbSaleProductLists")->model()->rowCount(), 1);
    desk_.addLine(0, "5");
    goTo(1);
    EXPECT_EQ(desk_.text("txtProdStat_2").toStdString(), "12") << "stale until it is asked for";
    desk_.click("cmdRefreshProdStat");
    EXPECT_EQ(desk_.text("txtProdStat_2").toStdString(), "7");
    EXPECT_EQ(saidSoFar(), "");
}

TEST_P(Management, ThePropertiesReachTheListBeforeAndDuringTheWorkOnIt)
{
    desk_.database.run("INSERT INTO tPSCompanyMaster (CM_Name) VALUES ('Acme')");
    desk_.open();
    goTo(3);
    desk_.click("chkCmdSaveProperties"); // the list is made although its tab was never visited
    goTo(1);
    EXPECT_EQ(desk_.grid("tdbSaleProductListsManager")->model()->rowCount(), 3);
    EXPECT_EQ(desk_.grid("tdbCompanyMaster")->model()->rowCount(), 1);

    // The edited product is hidden by another desk and by the switch: the typed texts are not saved over its neighbour.
    QTableView *list = desk_.grid("tdbSaleProductListsManager"); // by its name: a click on the check would hide it
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(1, 2)).center());
    desk_.click("chkCmdProdSaleAddEdiDel_1");
    desk_.type("txtProSaleInfo_1", "typed");
    desk_.database.run("UPDATE tPSProductMaster SET PM_IsHide = 1 WHERE PM_Name = '경옥고'");
    goTo(3);
    desk_.click("chkHideHiddenCheckedProducts");
    desk_.click("chkCmdSaveProperties");
    goTo(1);
    EXPECT_EQ(desk_.grid("tdbSaleProductListsManager")->model()->rowCount(), 2);
    EXPECT_EQ(desk_.text("txtProSaleInfo_1").toStdString(), "typed");
    desk_.click("chkCmdSaveProduct_0");
    EXPECT_EQ(saidSoFar(), "저장을 하지 못했습니다. 서버와의 연결을 확인하십시오.");
    EXPECT_EQ(desk_.joined("SELECT PM_Name FROM tPSProductMaster ORDER BY PM_PK"), "감초차\n경옥고\n옛날환");
}

INSTANTIATE_TEST_SUITE_P(Engines, Management, testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL), engineName);
