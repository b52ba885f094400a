#include "tests/whole/SaleDesk.h"

#include <QTabWidget>

namespace {

class Management : public testing::TestWithParam<ado::Engine>
{
protected:
    void goTo(int tab)
    {
        desk_.control<QTabWidget>("c1tabMain")->setCurrentIndex(tab);
        walk::settle();
    }

    SaleDesk desk_{GetParam()};
};

} // namespace

TEST_P(Management, ThePropertiesReachTheListBeforeAndAfterItsFirstVisit)
{
    desk_.database.run("INSERT INTO tPSCompanyMaster (CM_Name) VALUES ('Acme')");
    desk_.open();
    goTo(3);
    desk_.click("chkCmdSaveProperties"); // the list is made although its tab was never visited
    goTo(1);
    EXPECT_EQ(desk_.grid("tdbSaleProductListsManager")->model()->rowCount(), 3);
    EXPECT_EQ(desk_.grid("tdbCompanyMaster")->model()->rowCount(), 1);

    desk_.database.run("UPDATE tPSProductMaster SET PM_IsHide = 1 WHERE PM_Name = '경옥고'");
    goTo(3);
    desk_.click("chkHideHiddenCheckedProducts");
    desk_.click("chkCmdSaveProperties");
    goTo(1);
    EXPECT_EQ(desk_.grid("tdbSaleProductListsManager")->model()->rowCount(), 2);
}

INSTANTIATE_TEST_SUITE_P(Engines, Management, testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL),
                         engineName);
