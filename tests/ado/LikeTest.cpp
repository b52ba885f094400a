#include "platform/ado/LikeOperator.h"
#include "tests/ado/Desks.h"
#include "tests/support/Cases.h"

class Like : public Desks
{
};
INSTANTIATE_TEST_SUITE_P(Engines, Like, testing::ValuesIn(allEngines), engineName);

TEST_P(Like, MeansTheSameOnEveryEngine)
{
    for (const QStringList &one : casesOf("ado/like.cases", 3)) {
        SCOPED_TRACE(one.join(" LIKE ").toStdString());
        const auto found = opened(QStringLiteral("SELECT CASE WHEN '%1' LIKE '%2' THEN 1 ELSE 0 END AS found, "
                                                 "CASE WHEN '%1' NOT LIKE '%2' THEN 1 ELSE 0 END AS missed")
                                      .arg(one[0], one[1]),
                                  CursorType::ForwardOnly, LockType::ReadOnly);
        EXPECT_EQ(runtime::CLng(found->value(QStringLiteral("found"))), one[2] == "true");
        EXPECT_EQ(runtime::CLng(found->value(QStringLiteral("missed"))), one[2] == "false");
    }
}

TEST_P(Like, FindsNoRowWhoseTextIsNull)
{
    addProducts({"one"});
    clinic.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Catagory) VALUES ('C')"));
    const auto found = opened(QStringLiteral("SELECT * FROM tPSProductMaster WHERE PM_Name LIKE '%'"));
    EXPECT_EQ(found->rowCount(), 1);
}

TEST(LikeOperator, TakesASignBehindTheEscapeSignAsItself)
{
    EXPECT_TRUE(ado::like(u"50%", u"50!%", U'!'));
    EXPECT_FALSE(ado::like(u"500", u"50!%", U'!'));
    EXPECT_TRUE(ado::like(u"[a]", u"![a]", U'!'));
}
