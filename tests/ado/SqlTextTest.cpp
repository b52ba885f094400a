#include "platform/ado/SqlText.h"
#include "tests/ado/Desks.h"
#include "tests/support/Cases.h"

using ado::Dialect;

namespace {

bool isOne(const QString &statement, Dialect dialect)
{
    return !errorOf([&] { ado::oneStatement(statement, dialect); });
}

} // namespace

TEST(SqlText, TakesExactlyOneStatementAsEachServerReadsIt)
{
    for (const QStringList &one : casesOf("ado/one-statement.cases", 4)) {
        EXPECT_EQ(isOne(one[0], Dialect::SQLite), one[1] == "true") << one[0].toStdString();
        EXPECT_EQ(isOne(one[0], Dialect::PostgreSQL), one[2] == "true") << one[0].toStdString();
        EXPECT_EQ(isOne(one[0], Dialect::MariaDB), one[3] == "true") << one[0].toStdString();
    }
    const QString withNul = QStringLiteral("SELECT 1") + QChar(0) + QStringLiteral("; DELETE FROM t");
    EXPECT_FALSE(isOne(withNul, Dialect::SQLite));
    // Half a character is sent as '?', and before E that is an operator instead of the end of a word.
    const QString withHalf =
        QStringLiteral("SELECT ") + QChar(0xd800) + QStringLiteral(R"(E'' || $$'; DELETE FROM t --$$)");
    EXPECT_FALSE(isOne(withHalf, Dialect::PostgreSQL));
}

class Statements : public Desks
{
};
INSTANTIATE_TEST_SUITE_P(Engines, Statements, testing::ValuesIn(allEngines), engineName);

TEST_P(Statements, OnlyASelectOpensARecordset)
{
    addProducts({"one"});
    EXPECT_EQ(errorOf([&] { opened(QStringLiteral("DELETE FROM tPSProductMaster")); }), ErrorNumber::Database);
    EXPECT_EQ(names().size(), 1);
}

TEST_P(Statements, TheFailureTellsTheServersWordsBehindAKoreanSentence)
{
    try {
        desk->Execute(QStringLiteral("UPDATE tPSNothing SET a = 1"));
        FAIL();
    } catch (const runtime::RuntimeError &error) {
        EXPECT_EQ(error.number(), ErrorNumber::Database);
        EXPECT_TRUE(error.description().startsWith(QStringLiteral("저장하거나 가져오지 못했습니다.")));
        EXPECT_TRUE(error.description().contains(QStringLiteral("tPSNothing"), Qt::CaseInsensitive))
            << error.description().toStdString();
    }
}
