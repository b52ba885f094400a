#include "desk/check/Examination.h"
#include "desk/sample/Clinic.h"
#include "tests/support/Cases.h"
#include "tests/support/TestDatabase.h"

#include <map>
#include <memory>
#include <ostream>

using namespace std::chrono_literals;

namespace {

/// One small clinic an engine; what a test does to it is rolled back.
class Check : public testing::TestWithParam<ado::Engine>
{
protected:
    static void TearDownTestSuite() { clinics_.clear(); }

    void SetUp() override
    {
        std::unique_ptr<TestDatabase> &clinic = clinics_[GetParam()];
        if (!clinic) {
            clinic = std::make_unique<TestDatabase>(GetParam(), false);
            sample::fill(*clinic->connection(), sample::Size::Small);
        }
        connection_ = clinic->connection();
    }

    /// Titles of the queries that find something after the statements.
    QStringList found(const QString &statements)
    {
        connection_->BeginTrans();
        for (const QString &statement : statements.split(u';'))
            EXPECT_NE(connection_->Execute(statement), 0) << statement.toStdString();
        QStringList titles;
        for (const check::Query &query : check::queries()) {
            const check::Finding finding = check::examine(*connection_, query, 0ms);
            EXPECT_EQ(finding.failure, QString()) << query.title.toStdString();
            if (finding.violations > 0)
                titles << query.title;
        }
        connection_->RollbackTrans();
        return titles;
    }

    ado::ConnectionPtr connection_;

private:
    static inline std::map<ado::Engine, std::unique_ptr<TestDatabase>> clinics_;
};

const QString touchNothing = QStringLiteral("UPDATE tPSProperties SET tpsps_Key = tpsps_Key");

} // namespace

INSTANTIATE_TEST_SUITE_P(Engines, Check, testing::ValuesIn(allEngines), engineName);

TEST_P(Check, FindsEachDamageAndNothingBeside)
{
    QStringList reported;
    for (const QStringList &damage : casesOf("desk/damages.cases", 2)) {
        EXPECT_EQ(found(damage[1]).join(u'\n').toStdString(), damage[0].toStdString()) << damage[1].toStdString();
        reported << damage[0];
    }
    for (const check::Query &query : check::queries())
        EXPECT_TRUE(reported.contains(query.title)) << query.title.toStdString();
}

TEST_P(Check, LetsPassWhatTheDesksThemselvesMake)
{
    EXPECT_EQ(found(touchNothing).join(u'\n').toStdString(), "");
    for (const QStringList &legal : casesOf("desk/legal.cases", 1))
        EXPECT_EQ(found(legal[0]).join(u'\n').toStdString(), "") << legal[0].toStdString();
}

TEST_P(Check, ShowsTheFirstRowsWithTheirKeys)
{
    const check::Query many{
        QStringLiteral("많은 거래"), QStringLiteral("없음"),
        QStringLiteral("SELECT OrdM_PK AS 거래번호, CASE WHEN OrdM_PK > 1 THEN OrdM_Date END AS 날짜, "
                       "OrdM_TaxTotal - OrdM_TaxTotal AS 금액, '' AS 메모 FROM tPSOrderMaster ORDER BY OrdM_PK")};
    const check::Finding finding = check::examine(*connection_, many, 1ms);
    EXPECT_EQ(finding.violations, 320);
    EXPECT_EQ(finding.firstRows.size(), check::ShownRows);
    EXPECT_EQ(finding.firstRows.value(0).toStdString(), "거래번호 1 · 날짜 (없음) · 금액 0 · 메모 (빈 값)");
    EXPECT_EQ(check::examine(*connection_, {many.title, many.remedy, QStringLiteral("SELECT nothing")}, 0ms)
                  .failure.isEmpty(),
              false);
}

TEST(CheckQueries, CountOnlyWhatStandsTwice)
{
    TestDatabase clinic(ado::Engine::SQLite);
    const check::Query passing{QStringLiteral("지나가는 행"), QStringLiteral("없음"),
                               QStringLiteral("SELECT 1 AS 번호 UNION ALL SELECT strftime('%s%f', 'now')")};
    EXPECT_EQ(check::examine(*clinic.connection(), passing, 0ms).violations, 2);
    EXPECT_EQ(check::examine(*clinic.connection(), passing, 20ms).violations, 1);
}

TEST(CheckQueries, NeedATitleARemedyAndAStatement)
{
    const QString whole = QStringLiteral("-- 제목: 가\n-- 조치: 나\n-- for the reader\nSELECT 1\n");
    EXPECT_EQ(check::readQuery(whole).statement, QStringLiteral("SELECT 1"));
    for (const char *missing : {"-- 제목: 가\n", "-- 조치: 나\n", "SELECT 1\n"})
        EXPECT_ANY_THROW(check::readQuery(QString(whole).remove(QString::fromUtf8(missing)))) << missing;
}
