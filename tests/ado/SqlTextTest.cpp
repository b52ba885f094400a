#include "platform/ado/SqlText.h"
#include "tests/ado/Desks.h"

using ado::Dialect;

namespace {

struct TextCase
{
    const char *statement;
    bool sqlite;
    bool postgres;
};

bool isOne(const char *statement, Dialect dialect)
{
    return !errorOf([&] { ado::oneStatement(QString::fromUtf8(statement), dialect); });
}

} // namespace

TEST(SqlText, TakesExactlyOneStatementAsEachServerReadsIt)
{
    const TextCase cases[]{
        {"SELECT 1", true, true},
        {" SELECT 1 ; ", true, true},
        {"SELECT 1; DELETE FROM t", false, false},
        {"SELECT 1;;", false, false},
        {"", false, false},
        {" ; ", false, false},
        {"SELECT 1 -- rest", false, false},
        {"SELECT /* rest */ 1", false, false},
        {"SELECT 1 - -1", true, true},
        // Inside a literal everything is text; a doubled quote does not end it.
        {"SELECT ';', '--', '/*'", true, true},
        {"SELECT 'it''s; DELETE FROM t'", true, true},
        {"SELECT 'open", false, false},
        {"SELECT 'a'; DELETE FROM t WHERE x = 'b'", false, false},
        {"SELECT \"a;b\", \"c--d\"", true, true},
        // A backslash ends nothing and saves nothing, except in PostgreSQL's E''.
        {R"(SELECT 'a\'; DELETE FROM t --')", false, false},
        {R"(SELECT E'a\'; DELETE FROM t')", false, true},
        {R"(SELECT E'a\\'; DELETE FROM t')", false, false},
        {"SELECT E'a'\n'b\\'; DELETE FROM t'", false, true},
        {R"(SELECT nameE'a\'; DELETE FROM t')", false, false},
        // The sign before E is an operator to PostgreSQL, so the backslash escapes there.
        {R"(SELECT @E'a\'' ; DELETE FROM t WHERE x = ')", true, false},
        // A wide blank is part of a word to PostgreSQL: no E'' begins there.
        {"SELECT \u00a0E'a\\'; DELETE FROM t --'", false, false},
        // Brackets are names but not on PostgreSQL.
        {"SELECT [a;b]", true, false},
        {"SELECT [a--b]", true, false},
        {"SELECT [a", false, true},
        {"SELECT '[a;b'", true, true},
        {"SELECT `a;b`", true, false},
        // Dollar quotes are literals of PostgreSQL alone.
        {"SELECT $$a;b$$", false, true},
        {"SELECT $tag$ $$ ; -- $tag$", false, true},
        {"SELECT $a$ ; $b$", false, false},
        {"SELECT a$$ ; DELETE FROM t; $$", false, false},
        {"SELECT $1$ ; $1$", false, false},
        // No server takes these, but a driver between would put something else in their place.
        {"SELECT {fn now()}", false, false},
        {"SELECT '{fn now()}'", true, true},
        {"SELECT (1", false, false},
        {"SELECT 1)", false, false},
    };
    for (const TextCase &one : cases) {
        EXPECT_EQ(isOne(one.statement, Dialect::SQLite), one.sqlite) << one.statement;
        EXPECT_EQ(isOne(one.statement, Dialect::PostgreSQL), one.postgres) << one.statement;
    }
    const QString withNul = QStringLiteral("SELECT 1") + QChar(0) + QStringLiteral("; DELETE FROM t");
    EXPECT_TRUE(errorOf([&] { ado::oneStatement(withNul, Dialect::SQLite); }));
    // Half a character is sent as '?', and before E that is an operator instead of the end of a word.
    const QString withHalf =
        QStringLiteral("SELECT ") + QChar(0xd800) + QStringLiteral(R"(E'' || $$'; DELETE FROM t --$$)");
    EXPECT_TRUE(errorOf([&] { ado::oneStatement(withHalf, Dialect::PostgreSQL); }));
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

TEST_P(Statements, ExecuteTellsTheRowsItTouched)
{
    addProducts({"one", "two", "three"});
    EXPECT_EQ(desk->Execute(QStringLiteral("UPDATE tPSProductMaster SET PM_IsHide = 1 WHERE PM_UnitPrice > 1000")), 2);
    EXPECT_EQ(desk->Execute(QStringLiteral("DELETE FROM tPSProductMaster WHERE PM_Name = 'none'")), 0);
}
