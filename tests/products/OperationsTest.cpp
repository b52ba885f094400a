#include "data/clsSQL.h"
#include "platform/runtime/RuntimeError.h"
#include "products/GoneRow.h"
#include "products/IncomingOperations.h"
#include "products/ProductOperations.h"
#include "tests/support/SaleDatabase.h"

namespace {

class Shop : public SaleDatabase, public testing::WithParamInterface<ado::Engine>
{
protected:
    Shop()
        : SaleDatabase(GetParam())
    {
        load();
    }
    void load()
    {
        openRows(session_.rsSaleProductListsManager, clsSQL().getProductMasterSQL(true));
        openRows(session_.rsCompanyMaster, clsSQL().getCmpnyMstrSQL());
        openRows(session_.rsProductIncoming, clsSQL().getProdIncomingSQL(1));
    }
    Rows products()
    {
        return rows(
            "SELECT PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, PM_IsHide, PM_EtcMemo, PM_AddedDate "
            "FROM tPSProductMaster ORDER BY PM_PK");
    }
    Rows purchases()
    {
        return rows("SELECT PM_PK, CM_PK, IN_Count, IN_UnitPrice, IN_HalinTotal, IN_Total, IN_EtcMemo, IN_Date FROM "
                    "tPSIncoming "
                    "ORDER BY IN_PK");
    }
    static ProductEdit tea()
    {
        return {.catagory = " 차 ",
                .name = "감초차",
                .unitPrice = "\\12,000",
                .memo = "단 맛",
                .taxed = true,
                .valid = false,
                .addedDate = today()};
    }
    static IncomingEdit twelve()
    {
        return {.companyTag = "7",
                .count = "12",
                .unitPrice = "\\1,000",
                .halinTotal = "\\500",
                .total = "\\11,500",
                .memo = "외상",
                .date = today()};
    }

    ProductOperations products_{session_};
    IncomingOperations incoming_{session_};
};

} // namespace

TEST_P(Shop, AProductWithoutPriceFlagsAndDateKeepsToWhatThePanelShows)
{
    atOtherDesk("INSERT INTO tPSProductMaster (PM_Name, PM_IsHide) VALUES ('빈 물품', 1)");
    load();
    ProductEdit shown{.catagory = "기타",
                      .name = "빈 물품",
                      .unitPrice = "",
                      .memo = "",
                      .taxed = true,
                      .valid = false,
                      .addedDate = QDate(1900, 1, 1)};
    products_.beginChange();
    EXPECT_EQ(products_.change(shown), SaveOutcome::Saved);
    EXPECT_THAT(products(), ElementsAre("기타|빈 물품|NULL|1|0|1||1900-01-01"));

    shown.unitPrice = QStringLiteral("\\0");
    products_.beginChange();
    EXPECT_EQ(products_.change(shown), SaveOutcome::Saved);
    EXPECT_THAT(rows("SELECT PM_UnitPrice FROM tPSProductMaster"), ElementsAre("0"));
    shown.unitPrice.clear(); // a box emptied by the user stands for no money
    EXPECT_EQ(products_.add(shown), SaveOutcome::Saved);
    EXPECT_THAT(rows("SELECT PM_UnitPrice FROM tPSProductMaster ORDER BY PM_PK"), ElementsAre("0", "0"));
}

TEST_P(Shop, AnEditSavesTheProductItBeganWith)
{
    atOtherDesk("INSERT INTO tPSProductMaster (PM_Catagory, PM_Name) VALUES ('가', '첫째'), ('나', '둘째')");
    load();
    ado::Recordset &list = *session_.rsSaleProductListsManager;
    list.moveTo(1);
    products_.beginChange();
    atOtherDesk("UPDATE tPSProductMaster SET PM_IsHide = 1 WHERE PM_PK = 2"); // what no save assigns takes no part
    list.Requery();                                                           // stands on the first product again
    EXPECT_EQ(products_.change(tea()), SaveOutcome::Saved);
    EXPECT_THAT(rows("SELECT PM_Name FROM tPSProductMaster ORDER BY PM_PK"), ElementsAre("첫째", "감초차"));

    // Changed by another desk and read anew since: what was typed knew nothing of that.
    list.Requery();
    list.moveTo(1);
    products_.beginChange();
    atOtherDesk("UPDATE tPSProductMaster SET PM_EtcMemo = '품절' WHERE PM_PK = 2");
    list.Requery();
    EXPECT_EQ(products_.change(tea()), SaveOutcome::Failed);
    atOtherDesk("DELETE FROM tPSProductMaster WHERE PM_PK = 2");
    list.Requery();
    EXPECT_EQ(products_.change(tea()), SaveOutcome::Failed);
    EXPECT_THAT(rows("SELECT PM_Name, PM_EtcMemo FROM tPSProductMaster"), ElementsAre("첫째|NULL"));
    EXPECT_FALSE(gcnnMasterDB->inTransaction());
}

TEST_P(Shop, APurchaseThatFailedUntrappedIsStoredOnceByTheNextSave)
{
    atOtherDesk("INSERT INTO tPSProductMaster (PM_Catagory, PM_Name) VALUES ('가', '첫째')");
    atOtherDesk("INSERT INTO tPSCompanyMaster (CM_PK, CM_Name) VALUES (3, '한빛'), (7, '새봄')");
    IncomingEdit edit = twelve();
    edit.companyTag = QStringLiteral(" ");
    EXPECT_EQ(incoming_.add(ProductKey(1), edit), SaveOutcome::Refused);
    edit = twelve();
    edit.date = QDate();
    {
        ado::AbandonedTransactions edgeOfEvent;
        EXPECT_THROW(incoming_.add(ProductKey(1), edit), runtime::RuntimeError);
        EXPECT_TRUE(gcnnMasterDB->inTransaction());
    }
    EXPECT_THAT(purchases(), IsEmpty());
    EXPECT_EQ(incoming_.add(ProductKey(1), twelve()), SaveOutcome::Saved);
    EXPECT_THAT(purchases(), ElementsAre("1|7|12|1000|500|11500|외상|2026-11-24"));

    // What no number is counts as far as it is one in the quantity, and by its digits in money.
    edit = {.companyTag = "3",
            .count = "-2.5개",
            .unitPrice = "값 1,500",
            .halinTotal = "",
            .total = "-\\3,750",
            .memo = "",
            .date = QDate(2026, 1, 2)};
    EXPECT_EQ(incoming_.change(IncomingKey(1), edit), SaveOutcome::Saved);
    EXPECT_THAT(purchases(), ElementsAre("1|3|-2.5|1500|0|-3750||2026-01-02"));
}

INSTANTIATE_TEST_SUITE_P(Engines, Shop, testing::ValuesIn(allEngines), engineName);
