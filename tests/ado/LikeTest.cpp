#include "platform/ado/LikeOperator.h"
#include "tests/ado/Desks.h"

class Like : public Desks
{
};
INSTANTIATE_TEST_SUITE_P(Engines, Like, testing::ValuesIn(allEngines), engineName);

TEST_P(Like, MeansTheSameOnEveryEngine)
{
    struct Case
    {
        const char *text;
        const char *pattern;
        bool matches;
    };
    const Case cases[]{
        {"공진단", "%진%", true},
        {"공진단", "진%", false},
        {"공진단", "공__", true},
        {"공진단", "공_", false},
        {"", "%", true},
        {"", "_", false},
        {"", "", true},
        {"a", "", false},
        {"Vitamin", "vITA%", true},
        {"abcabd", "%ab_", true},
        {"aab", "%ab", true},
        {"aXbXc", "a%b%c", true},
        {"a\nb", "a_b", true},
        {"a.c", "abc", false},
        {"a+c", "a+c", true},
        {"a\\c", "a\\c", true},
        {"a|b", "a|b", true},
        {"(a)", "(a)", true},
        {"b", "[abc]", true},
        {"d", "[abc]", false},
        {"B", "[a-f]", true},
        {"g", "[a-f]", false},
        {"g", "[^a-f]", true},
        {"B", "[^a-f]", false},
        {"나", "[가-다]", true},
        {"하", "[가-다]", false},
        {"-", "[a-]", true},
        {"^", "[a^]", true},
        {"%", "[%]", true},
        {"x", "[%]", false},
        {"_", "[_]", true},
        {"[", "[[]", true},
        {"[a", "[a", false},
        {"a", "[a", false},
        {"[", "[", false},
        {"[]", "[]", false},
        {"]", "]", true},
        {"a]", "[a]]", true},
        {"\\", "[\\]", true},
        {"b", "[f-a]", false},
        {"P", "%[CPNAME]%", true},
        {"x", "%[CPNAME]%", false},
        {"100%", "100[%]", true},
        {"1000", "100[%]", false},
        {"x😀y", "x_y", true},
        {"%[CPNAME]%", "%[CPNAME]%", true},
    };
    for (const Case &one : cases) {
        const QString text = QString::fromUtf8(one.text);
        const QString pattern = QString::fromUtf8(one.pattern);
        const auto found = opened(QStringLiteral("SELECT CASE WHEN '%1' LIKE '%2' THEN 1 ELSE 0 END AS found, "
                                                 "CASE WHEN '%1' NOT LIKE '%2' THEN 1 ELSE 0 END AS missed")
                                      .arg(text, pattern),
                                  CursorType::ForwardOnly, LockType::ReadOnly);
        EXPECT_EQ(runtime::CLng(found->value(QStringLiteral("found"))), one.matches)
            << one.text << " LIKE " << one.pattern;
        EXPECT_EQ(runtime::CLng(found->value(QStringLiteral("missed"))), !one.matches)
            << one.text << " LIKE " << one.pattern;
    }
}

TEST_P(Like, FindsNoRowWhoseTextIsNull)
{
    addProducts({"one"});
    clinic.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Catagory) VALUES ('C')"));
    const auto found = opened(QStringLiteral("SELECT * FROM tPSProductMaster WHERE PM_Name LIKE '%'"));
    EXPECT_EQ(found->rowCount(), 1);
}

TEST(LikeOperator, StillStandsAfterTheDatabaseWasOpenedAgain)
{
    TestDatabase clinic(ado::Engine::SQLite);
    for (int round = 0; round < 2; ++round) {
        const ado::ConnectionPtr desk = ado::Connection::open(clinic.address());
        Recordset found;
        found.Open(QStringLiteral("SELECT 'b' LIKE '[abc]' AS found"), desk, CursorType::Static, LockType::ReadOnly);
        EXPECT_TRUE(runtime::isTrue(found.value(QStringLiteral("found"))));
    }
}

TEST(LikeOperator, TakesASignBehindTheEscapeSignAsItself)
{
    EXPECT_TRUE(ado::like(u"50%", u"50!%", U'!'));
    EXPECT_FALSE(ado::like(u"500", u"50!%", U'!'));
    EXPECT_TRUE(ado::like(u"[a]", u"![a]", U'!'));
}
