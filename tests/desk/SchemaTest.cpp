#include "desk/schema/Schema.h"
#include "desk/schema/Tables.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/support/Cases.h"
#include "tests/support/TestDatabase.h"

#include <stdexcept>

namespace {

class Schema : public testing::TestWithParam<ado::Engine>
{
protected:
    TestDatabase clinic{GetParam()};

    /// Through the layer under which the components write.
    bool accepts(const QString &statement)
    {
        try {
            return clinic.connection()->Execute(statement) == 1;
        } catch (const runtime::RuntimeError &) {
            return false;
        }
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, Schema, testing::ValuesIn(allEngines), engineName);

} // namespace

TEST_P(Schema, AcceptsWhatTheSystemWrites)
{
    for (const QStringList &statement : casesOf("desk/written.cases", 1))
        EXPECT_TRUE(accepts(statement[0])) << statement[0].toStdString();
}

TEST_P(Schema, RefusesWhatNoColumnCanMean)
{
    ASSERT_TRUE(accepts("INSERT INTO t_HospSetup (HS_KEY, HS_Value) VALUES ('키', '1')"));
    for (const QStringList &statement : casesOf("desk/meaningless.cases", 1))
        EXPECT_FALSE(accepts(statement[0])) << statement[0].toStdString();
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
    for (const QStringList &statement : casesOf("desk/clicks.cases", 1)) {
        const QString plan = clinic.rows(QStringLiteral("EXPLAIN QUERY PLAN ") + statement[0]).join(u'\n');
        EXPECT_TRUE(plan.contains(" INDEX ")) << plan.toStdString();
        EXPECT_FALSE(plan.contains("SCAN")) << plan.toStdString();
    }
}
