#include "forms/clsNumberRelated.h"

#include <gtest/gtest.h>

TEST(PureNumber, ReadsTheAmountOutOfWhatWasTyped)
{
    const struct
    {
        const char *what;
        const char16_t *typed, *number;
    } cases[] = {
        {"money text", u"\\1,234", u"1234"},
        {"negative money text", u"-\\1,234", u"-1234"},
        {"minus anywhere", u"12-3", u"-123"},
        {"zero", u"\\0", u"0"},
        {"nothing", u"", u"0"},
        {"letters only", u"abc", u"0"},
        {"lone minus", u"-", u"0"},
        {"minus behind zero", u"\\0-", u"0"},
        {"negative zero", u"-000", u"0"},
        {"zeros", u"000", u"0"},
        {"leading zeros of a value stay", u"007", u"007"},
        {"digit in front of an empty box's sign", u"5\\0", u"5"},
        {"only the first of what stands there", u"57\\0", u"5"},
        {"minus in front of an empty box's sign", u"-\\0", u"0"},
        {"a decimal point is passed over", u"1.5", u"15"},
        {"ten digits", u"1234567890", u"123456789"},
        {"the minus counts among nine", u"-123456789", u"-12345678"},
        {"nine digits fit", u"999999999", u"999999999"},
        {"full-width digits", u"１２", u"12"},
    };
    for (const auto &entry : cases)
        EXPECT_EQ(clsNumberRelated().GetPureNumber(QString::fromUtf16(entry.typed)), QString::fromUtf16(entry.number))
            << entry.what;
}
