#include "platform/runtime/Currency.h"

#include "platform/runtime/RuntimeError.h"

#include <QtNumeric>

#include <algorithm>
#include <cmath>

namespace runtime {

namespace {

[[noreturn]] void raiseAmountOverflow()
{
    throw RuntimeError(ErrorNumber::Overflow, QStringLiteral("금액이 너무 큽니다."));
}

} // namespace

Currency Currency::fromWon(std::int64_t won)
{
    std::int64_t scaled = 0;
    if (qMulOverflow(won, Scale, &scaled))
        raiseAmountOverflow();
    return Currency(scaled);
}

Currency Currency::fromDouble(double value)
{
    const double scaled = std::nearbyint(value * Scale); // the default rounding mode is half to even
    constexpr double limit = 9223372036854775808.0;
    if (!(scaled >= -limit && scaled < limit))
        raiseAmountOverflow();
    return Currency(static_cast<std::int64_t>(scaled));
}

Currency Currency::fromPlainText(const QString &text, bool *ok)
{
    *ok = false;
    std::int64_t scaled = 0;
    bool negative = false;
    bool anyDigit = false;
    int decimals = -1; // -1 before the point
    int dropped = 0;   // first digit beyond the fourth decimal
    bool droppedMore = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text.at(i).unicode();
        if ((c == u'-' || c == u'+') && i == 0) {
            negative = c == u'-';
        } else if (c == u'.' && decimals < 0) {
            decimals = 0;
        } else if (c >= u'0' && c <= u'9') {
            anyDigit = true;
            const int digit = c - u'0';
            if (decimals >= 4) {
                if (decimals == 4)
                    dropped = digit;
                else
                    droppedMore = droppedMore || digit != 0;
                ++decimals;
                continue;
            }
            // Counted downwards, so that the lowest value can be read too.
            if (qMulOverflow(scaled, std::int64_t{10}, &scaled) || qSubOverflow(scaled, std::int64_t{digit}, &scaled))
                raiseAmountOverflow();
            if (decimals >= 0)
                ++decimals;
        } else {
            return {};
        }
    }
    if (!anyDigit)
        return {};
    for (int missing = decimals < 0 ? 4 : std::max(0, 4 - decimals); missing > 0; --missing) {
        if (qMulOverflow(scaled, std::int64_t{10}, &scaled))
            raiseAmountOverflow();
    }
    const bool roundUp = dropped > 5 || (dropped == 5 && (droppedMore || scaled % 2 != 0));
    if (roundUp && qSubOverflow(scaled, std::int64_t{1}, &scaled))
        raiseAmountOverflow();
    if (!negative && qSubOverflow(std::int64_t{0}, scaled, &scaled))
        raiseAmountOverflow();
    *ok = true;
    return Currency(scaled);
}

std::int64_t Currency::toWon() const
{
    std::int64_t won = scaled_ / Scale;
    const std::int64_t rest = std::abs(scaled_ % Scale);
    if (rest > Scale / 2 || (rest == Scale / 2 && won % 2 != 0))
        won += scaled_ < 0 ? -1 : 1;
    return won;
}

QString Currency::toText() const
{
    QString text = QString::number(scaled_ / Scale);
    if (scaled_ < 0 && scaled_ > -Scale)
        text.prepend(QLatin1Char('-'));
    const std::int64_t rest = std::abs(scaled_ % Scale);
    if (rest == 0)
        return text;
    QString fraction = QStringLiteral("%1").arg(rest, 4, 10, QLatin1Char('0'));
    while (fraction.endsWith(QLatin1Char('0')))
        fraction.chop(1);
    return text + QLatin1Char('.') + fraction;
}

Currency Currency::operator-() const
{
    return Currency() - *this;
}

Currency &Currency::operator+=(Currency other)
{
    std::int64_t result = 0;
    if (qAddOverflow(scaled_, other.scaled_, &result))
        raiseAmountOverflow();
    scaled_ = result;
    return *this;
}

Currency &Currency::operator-=(Currency other)
{
    std::int64_t result = 0;
    if (qSubOverflow(scaled_, other.scaled_, &result))
        raiseAmountOverflow();
    scaled_ = result;
    return *this;
}

Currency operator*(Currency amount, std::int64_t count)
{
    std::int64_t scaled = 0;
    if (qMulOverflow(amount.scaled_, count, &scaled))
        raiseAmountOverflow();
    return Currency(scaled);
}

} // namespace runtime
