#include "platform/runtime/SearchText.h"
#include "tests/support/Cases.h"

#include <gmock/gmock.h>

using runtime::SearchPattern;
using testing::ElementsAre;

TEST(SearchText, FitsByConsonantsHangulLatinAndDigits)
{
    for (const QStringList &one : casesOf("runtime/search.cases", 4)) {
        QString text;
        runtime::appendSearchable(text, one[0]);
        const auto fits = [&](SearchPattern::LastSyllable last) {
            return SearchPattern(one[1], last).indexIn(text) >= 0 ? QStringLiteral("true") : QStringLiteral("false");
        };
        SCOPED_TRACE(one.join(u' ').toStdString());
        EXPECT_EQ(fits(SearchPattern::LastSyllable::AsTyped), one[2]);
        EXPECT_EQ(fits(SearchPattern::LastSyllable::Begun), one[3]);
    }
}

TEST(SearchText, FindsRowsByAnyOfTheirTextsAndNotAcrossThem)
{
    runtime::SearchTexts texts;
    for (const char16_t *row : {u"공진단|환약", u"경옥고|단지", u"|"}) {
        for (const QString &text : QString::fromUtf16(row).split(u'|'))
            texts.add(text);
        texts.endRow();
    }
    EXPECT_THAT(texts.find(QStringLiteral("단")), ElementsAre(0, 1)) << "each row once";
    EXPECT_THAT(texts.find(QStringLiteral("고")), ElementsAre(1)) << "what fits as typed comes before what may";
    EXPECT_THAT(texts.find(QStringLiteral("지다")), ElementsAre()) << "nothing";
    EXPECT_THAT(texts.find(QStringLiteral("화")), ElementsAre(0)) << "a syllable that is still being typed";
    EXPECT_THAT(texts.find(QStringLiteral("고단")), ElementsAre()) << "across two texts";
    EXPECT_THAT(texts.find(QStringLiteral(" -")), ElementsAre()) << "nothing was typed";
}
