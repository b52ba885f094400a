#include "tests/whole/SaleDesk.h"

#include <QLabel>
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

TEST_P(Management, WhatWasSavedOrDeletedIsToldBesideTheStatus)
{
    desk_.database.run("INSERT INTO tPSCompanyMaster (CM_Name) VALUES ('Acme')");
    desk_.database.run("INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Date, IN_Count, IN_UnitPrice, IN_Total) "
                       "SELECT PM_PK, CM_PK, '2026-11-02', 5, 700, 3500 FROM tPSProductMaster, tPSCompanyMaster "
                       "WHERE PM_Name = '감초차'");
    desk_.open();
    goTo(1);
    const struct
    {
        const char *list;
        const char *edit;
        const char *save;
        const char *remove;
        const char *kind;
    } cases[] = {
        {"tdbProductIncoming", nullptr, nullptr, "chkcmdIncomingAED_2", "구매내역"},
        {"tdbCompanyMaster", "chkcmdCmpnyMstrAED_1", "chkcmdCmpnyMstrSave_0", "chkcmdCmpnyMstrAED_2", "거래처"},
        {"tdbSaleProductListsManager", "chkCmdProdSaleAddEdiDel_1", "chkCmdSaveProduct_0", "chkCmdProdSaleAddEdiDel_2",
         "물품"},
    };
    desk_.choose("tdbSaleProductListsManager", 0);
    const auto done = [this] { return desk_.control<QLabel>("lblDone")->text().toStdString(); };
    for (const auto &one : cases) {
        desk_.choose(one.list, 0);
        if (one.edit) {
            desk_.click(one.edit);
            desk_.click(one.save);
            EXPECT_EQ(done(), std::string(one.kind) + " 저장") << desk_.said();
        }
        desk_.choose(one.list, 0);
        desk_.answer(one.remove, controls::Answer::Yes);
        EXPECT_EQ(done(), std::string(one.kind) + " 삭제");
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, Management, testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL),
                         engineName);
