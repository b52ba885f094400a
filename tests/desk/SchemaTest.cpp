#include "desk/schema/Schema.h"
#include "desk/schema/Tables.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/support/TestDatabase.h"

#include <stdexcept>

namespace {

class Schema : public testing::TestWithParam<ado::Engine>
{
protected:
    TestDatabase clinic{GetParam()};

    /// Through the layer under which the components write.
    bool accepts(const char16_t *statement)
    {
        try {
            return clinic.connection()->Execute(QString::fromUtf16(statement)) == 1;
        } catch (const runtime::RuntimeError &) {
            return false;
        }
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, Schema, testing::ValuesIn(allEngines), engineName);

} // namespace

TEST_P(Schema, AcceptsWhatTheSystemWrites)
{
    const char16_t *const statements[]{
        u"INSERT INTO tPSProductMaster (PM_Name) VALUES (NULL)",
        u"INSERT INTO tPSProductMaster (PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsHide) VALUES ('둘', -500, 0, 1)",
        u"INSERT INTO tPSProductMaster (PM_Name, PM_UnitPrice, PM_AddedDate) VALUES ('둘', 99999999999, '1900-01-01')",
        u"INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (1, '2026-02-28')",
        u"INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Total, OrdM_Misugum) VALUES (1, '2026-02-28', -1, "
        u"-9000)",
        u"INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_Count) VALUES (1, 1, 100, -32768)",
        u"INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_Count, OrdD_OrderType) VALUES (1, 999, 32767, 2)",
        (u"INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, "
         u"tpstrans_Money, tpstrans_Method, tpstrans_Memo) VALUES (1, 1, '2026-02-28', 3, -2147483648, '', 'it''s')"),
        u"INSERT INTO tPSTransaction (tpstrans_Money, tpstrans_Method) VALUES (2147483647, NULL)",
        u"INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Date, IN_Count, IN_Total) VALUES (1, 1, '2024-02-29', 2.5, -10)",
        u"INSERT INTO tPSProperties (tpsps_Key, tpsps_Value) VALUES ('지점명', '')",
        u"INSERT INTO tPSProperties (tpsps_Key, tpsps_Value) VALUES ('지점명', '둘째')",
        u"INSERT INTO t_HospSetup (HS_KEY, HS_Value) VALUES ('키', NULL)",
    };
    for (const char16_t *statement : statements)
        EXPECT_TRUE(accepts(statement)) << QString::fromUtf16(statement).toStdString();
}

TEST_P(Schema, RefusesWhatNoColumnCanMean)
{
    ASSERT_TRUE(accepts(u"INSERT INTO t_HospSetup (HS_KEY, HS_Value) VALUES ('키', '1')"));
    const char16_t *const statements[]{
        u"INSERT INTO tPSProductMaster (PM_UnitPrice) VALUES ('천원')",
        u"INSERT INTO tPSProductMaster (PM_IsTaxed) VALUES (2)",
        u"INSERT INTO tPSProductMaster (PM_AddedDate) VALUES ('어제')",
        u"INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (1, '2026-02-29')",
        u"INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (1, NULL)",
        u"INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (NULL, '2026-02-28')",
        u"INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Gubun) VALUES (1, '2026-02-28', 40000)",
        u"INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_Count) VALUES (1, 1, 32768)",
        u"INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_Count) VALUES (1, 1, '둘')",
        u"INSERT INTO tPSOrderDetail (PM_PK, OrdD_Count) VALUES (1, 1)",
        u"INSERT INTO tPSTransaction (tpstrans_Money) VALUES (2147483648)",
        u"INSERT INTO tPSTransaction (tpstrans_Method) VALUES ('001')",
        u"INSERT INTO tPSIncoming (IN_Count) VALUES ('많이')",
        u"INSERT INTO t_HospSetup (HS_KEY, HS_Value) VALUES ('키', '2')",
    };
    for (const char16_t *statement : statements)
        EXPECT_FALSE(accepts(statement)) << QString::fromUtf16(statement).toStdString();
}

TEST_P(Schema, GivesKeysThatGoOnFromTheHighestWritten)
{
    clinic.run("INSERT INTO tPSOrderDetail (OrdD_PK, OrdM_PK, PM_PK) VALUES (40, 1, 1)");
    schema::continueKeys(*clinic.connection());
    clinic.run("INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK) VALUES (1, 1)");
    clinic.run("INSERT INTO tPSIncoming (PM_PK) VALUES (1)");
    EXPECT_EQ(clinic.value("SELECT MAX(OrdD_PK) FROM tPSOrderDetail"), QStringLiteral("41"));
    EXPECT_EQ(clinic.value("SELECT MAX(IN_PK) FROM tPSIncoming"), QStringLiteral("1"));
}

TEST_P(Schema, IsRecognisedOnlyWhenWhole)
{
    EXPECT_TRUE(schema::hasSchema(*clinic.connection()));
    clinic.run("ALTER TABLE tPSIncoming DROP COLUMN IN_EtcMemo");
    EXPECT_FALSE(schema::hasSchema(*clinic.connection()));
    TestDatabase bare(GetParam(), false);
    EXPECT_FALSE(schema::hasSchema(*bare.connection()));
}

TEST_P(Schema, IsMadeWholeOrNotAtAll)
{
    TestDatabase halfMade(GetParam(), false);
    halfMade.run("CREATE TABLE tPSProperties (other INTEGER)");
    EXPECT_THROW(schema::createSchema(*halfMade.connection()), runtime::RuntimeError);
    EXPECT_THROW(halfMade.rows("SELECT * FROM tPSProductMaster"), std::runtime_error);

    halfMade.run("DROP TABLE tPSProperties");
    EXPECT_NO_THROW(schema::createSchema(*halfMade.connection()));
    EXPECT_TRUE(schema::hasSchema(*halfMade.connection()));
}

TEST(SchemaIndexes, ServeTheStatementsThatRunOnEveryClick)
{
    TestDatabase clinic(ado::Engine::SQLite);
    const char16_t *const statements[]{
        u"SELECT * FROM tPSOrderMaster WHERE Cust_PK = 1 ORDER BY OrdM_Date DESC",
        u"SELECT OrdM_PK FROM tPSOrderMaster WHERE Cust_PK = 1 AND OrdM_Date = '2026-01-02'",
        u"SELECT * FROM tPSOrderDetail WHERE OrdM_PK = 1 AND OrdM_PK > 0 ORDER BY OrdD_PK DESC",
        u"SELECT * FROM tPSTransaction WHERE tpstrans_Customer_PK = 1 and tpstrans_OrderM_PK = 1",
        u"SELECT SUM(tpstrans_Money) FROM tPSTransaction WHERE tpstrans_Customer_PK = 1 AND tpstrans_Date = "
        u"'2026-01-02'",
        u"SELECT SUM(IN_Count) FROM tPSIncoming WHERE PM_PK = 1",
        u"SELECT SUM(OrdD_Count) FROM tPSOrderDetail WHERE PM_PK = 1",
        u"SELECT * FROM Receipt WHERE Customer_PK = 1",
    };
    for (const char16_t *statement : statements) {
        const QString plan =
            clinic.rows(QStringLiteral("EXPLAIN QUERY PLAN ") + QString::fromUtf16(statement)).join(u'\n');
        EXPECT_TRUE(plan.contains(" INDEX ")) << plan.toStdString();
        EXPECT_FALSE(plan.contains("SCAN")) << plan.toStdString();
    }
}
