#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "tests/support/Refusal.h"

#include <gtest/gtest.h>

#include <limits>

using namespace runtime;

namespace {

QVariant won(std::int64_t amount)
{
    return QVariant::fromValue(Currency::fromWon(amount));
}

} // namespace

TEST(Val, TakesTheNumericPrefixAndNothingElse)
{
    const struct
    {
        const char16_t *text;
        double value;
    } cases[] = {
        {u"", 0},        {u"12 원", 12}, {u"1,000", 1}, {u"\\1,000", 0}, {u" 3 4", 34}, {u"-7.5개", -7.5},
        {u"1e3x", 1000}, {u"2e", 2},     {u"한", 0},    {u"&H1F", 31},   {u".5", 0.5},  {u"-", 0},
    };
    for (const auto &c : cases)
        EXPECT_EQ(Val(QString::fromUtf16(c.text)), c.value) << QString::fromUtf16(c.text).toStdString();
    EXPECT_EQ(Val(QStringLiteral("1e308개")), 1e308);
    for (const QString &huge : {QStringLiteral("1e309"), QStringLiteral("-2d400 개"), QString(400, u'9')})
        EXPECT_EQ(errorOf([&] { Val(huge); }), ErrorNumber::Overflow) << huge.toStdString();
}

TEST(Trim, TakesBlanksAndNoOtherWhiteSpace)
{
    const struct
    {
        const char16_t *text;
        const char16_t *trimmed;
    } cases[] = {
        {u"  약 봉투  ", u"약 봉투"},
        {u"\t아침\r\n", u"\t아침\r\n"},
        {u" \u3000이름 \u3000 ", u"\u3000이름 \u3000"},
        {u"\u00A0값", u"\u00A0값"},
        {u"   ", u""},
        {u"", u""},
    };
    for (const auto &c : cases)
        EXPECT_EQ(Trim(QString::fromUtf16(c.text)), QString::fromUtf16(c.trimmed));
}

TEST(CCur, ReadsWhatAKoreanDesktopReads)
{
    const struct
    {
        const char16_t *text;
        const char *amount;
    } cases[] = {
        {u"\\1,234", "1234"},   {u"-\\1,234", "-1234"}, {u" 1 ", "1"},
        {u"1,234.5", "1234.5"}, {u"\\-5", "-5"},        {u"922337203685477", "922337203685477"},
        {u"1e3", "1000"},       {u"0.00005", "0"},      {u"0.00015", "0.0002"},
        {u"₩12", "12"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(CCur(QString::fromUtf16(c.text)).toText().toStdString(), c.amount);
    for (const char16_t *bad : {u"", u"\\", u"abc", u"12원", u"1-2", u"--1"})
        EXPECT_EQ(errorOf([&] { CCur(QString::fromUtf16(bad)); }), ErrorNumber::TypeMismatch)
            << QString::fromUtf16(bad).toStdString();
    EXPECT_EQ(CCur(QStringLiteral("１２,３４５")), Currency::fromWon(12345))
        << "digits as a Korean input method gives them";
    EXPECT_EQ(errorOf([] { CCur(QVariant()); }), ErrorNumber::InvalidUseOfNull);
    EXPECT_EQ(errorOf([] { CCur(QStringLiteral("9e15")); }), ErrorNumber::Overflow);
}

TEST(WholeNumbers, RoundHalfToEvenAndRefuseWhatDoesNotFit)
{
    const struct
    {
        QVariant value;
        int whole;
    } cases[] = {
        {QStringLiteral("2.5"), 2},
        {QStringLiteral("3.5"), 4},
        {QStringLiteral("-2.5"), -2},
        {QStringLiteral("\\1,000"), 1000},
        {true, -1},
        {won(12), 12},
        {0.5, 0},
        {QVariant::fromValue(Currency::fromScaled(15'000)), 2},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(CLng(c.value), c.whole);
        EXPECT_EQ(CInt(c.value), c.whole);
    }
    EXPECT_EQ(errorOf([] { CInt(32768); }), ErrorNumber::Overflow);
    EXPECT_EQ(CInt(-32768), -32768);
    EXPECT_EQ(errorOf([] { CLng(won(2'147'483'648)); }), ErrorNumber::Overflow);
    EXPECT_EQ(errorOf([] { CLng(QStringLiteral("")); }), ErrorNumber::TypeMismatch);
    EXPECT_EQ(errorOf([] { CLng(QStringLiteral("1e300")); }), ErrorNumber::Overflow);
    EXPECT_EQ(errorOf([] { CLng(~0ULL); }), ErrorNumber::Overflow);
    EXPECT_EQ(CLng(QStringLiteral("&HFFFF")), -1) << "four hexadecimal digits are a 16-bit pattern";
    EXPECT_EQ(CLng(QStringLiteral("&H10000")), 65536);
}

TEST(Currency, RaisesInsteadOfWrappingAndLeavesTheAmountAsItWas)
{
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    Currency amount = Currency::fromScaled(most);
    EXPECT_EQ(errorOf([&] { amount += Currency::fromScaled(1); }), ErrorNumber::Overflow);
    EXPECT_EQ(amount.scaled(), most);
    EXPECT_EQ(errorOf([&] { amount * 2; }), ErrorNumber::Overflow);
    EXPECT_EQ(errorOf([] { -Currency::fromScaled(std::numeric_limits<std::int64_t>::min()); }), ErrorNumber::Overflow);
    EXPECT_EQ(errorOf([] { Currency::fromWon(most); }), ErrorNumber::Overflow);

    EXPECT_EQ(Currency::fromPlainText("-922337203685477.5808"),
              Currency::fromScaled(std::numeric_limits<std::int64_t>::min()));
    EXPECT_EQ(errorOf([] { Currency::fromPlainText("922337203685477.5808"); }), ErrorNumber::Overflow);
}

TEST(DefaultText, IsPlainForEveryKindOfValue)
{
    const struct
    {
        QVariant value;
        const char16_t *text;
    } cases[] = {
        {QVariant(), u""},
        {won(-1234), u"-1234"},
        {true, u"True"},
        {1.5, u"1.5"},
        {12345678.0f, u"1.234568E+07"},
        {1234567.0f, u"1234567"},
        {QDate(2026, 11, 24), u"2026-11-24"},
        {QDateTime(QDate(2026, 11, 24), QTime(15, 5, 9)), u"2026-11-24 오후 3:05:09"},
        {QDateTime(QDate(2026, 11, 24), QTime(0, 5, 9)), u"2026-11-24 오전 12:05:09"},
        {QDateTime(QDate(2026, 11, 24), QTime(0, 0)), u"2026-11-24"},
        {QVariant(QMetaType::fromType<int>()), u""}, // a NULL of a typed column
        {QVariant::fromValue(Currency::fromScaled(-5'000)), u"-0.5"},
        {0.1 + 0.2, u"0.3"},
        {1e15, u"1E+15"},
        {-0.0, u"0"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(text(c.value), QString::fromUtf16(c.text));
}

TEST(Format, KnowsThePatternsInUse)
{
    const QString won9 = strMoneyFormat;
    const struct
    {
        QVariant value;
        QString pattern;
        const char16_t *text;
    } cases[] = {
        {won(1234), won9, u"\\1,234"},
        {won(-1234), won9, u"-\\1,234"},
        {0, won9, u"\\0"},
        {QStringLiteral("-12"), won9, u"-\\12"},
        {QVariant(), won9, u""},
        {QStringLiteral(""), won9, u""},
        {QStringLiteral("-"), won9, u"-"},
        {-0.3, won9, u"\\0"},
        {-0.3, QStringLiteral("##,##0"), u"0"},
        {16777216.0f, QStringLiteral("##,##0"), u"16,777,216"},
        {QVariant::fromValue(Currency::fromScaled(std::numeric_limits<std::int64_t>::min())), QStringLiteral("##,##0"),
         u"-922,337,203,685,478"},
        {QStringLiteral("\\1,234"), QStringLiteral("#,###,##0"), u"1,234"},
        {QStringLiteral("곧"), QStringLiteral("yyyy-mm-dd"), u"곧"},
        {0, QStringLiteral("##,###"), u""},
        {1234567, QStringLiteral("##,###"), u"1,234,567"},
        {0, QStringLiteral("##,##0"), u"0"},
        {-1234.5, QStringLiteral("##,##0"), u"-1,235"},
        {2.5, QStringLiteral("##,##0"), u"3"},
        {QVariant::fromValue(Currency::fromScaled(25'000)), QStringLiteral("##,##0"), u"3"},
        {500, QStringLiteral("\\\\###,##0"), u"\\500"},
        {won(1000), QStringLiteral("Currency"), u"\\1,000"},
        {QDate(2026, 1, 5), QStringLiteral("YYYY-MM-DD"), u"2026-01-05"},
        {QStringLiteral("2026-01-05"), QStringLiteral("yyyy-mm-dd"), u"2026-01-05"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(Format(c.value, c.pattern), QString::fromUtf16(c.text)) << c.pattern.toStdString();
}

TEST(IsNumeric, TakesWholeTextsOnly)
{
    for (const char16_t *good : {u"1", u"-1,000", u"\\5", u" 7 ", u"1.5e2", u"３", u"1."})
        EXPECT_TRUE(IsNumeric(QString::fromUtf16(good))) << QString::fromUtf16(good).toStdString();
    for (const char16_t *bad : {u"", u"\\", u"-", u"1원", u"일", u"1 2"})
        EXPECT_FALSE(IsNumeric(QString::fromUtf16(bad))) << QString::fromUtf16(bad).toStdString();
}
