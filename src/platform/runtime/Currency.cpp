#include "platform/runtime/Currency.h"

#include "platform/runtime/RuntimeError.h"

#include <QtNumeric>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace runtime {

namespace {

[[noreturn]] void raiseAmountOverflow()
{
    throw RuntimeError(ErrorNumber::Overflow, QStringLiteral("금액이 너무 큽니다."));
}

constexpr std::size_t moneyDecimals = 4; // as many zeros as Currency::Scale has

std::string_view takeDigits(std::string_view &rest)
{
    const std::string_view digits = rest.substr(0, std::min(rest.find_first_not_of("0123456789"), rest.size()));
    rest.remove_prefix(digits.size());
    return digits;
}

/// The number, which is not above 0, with one more digit.
std::int64_t withDigit(std::int64_t number, char digit)
{
    std::int64_t result = 0;
    if (qMulOverflow(number, std::int64_t{10}, &result) || qSubOverflow(result, std::int64_t{digit - '0'}, &result))
        raiseAmountOverflow();
    return result;
}

/// Whether what stands behind the fourth decimal pushes the value away from 0; half goes to even.
bool roundsUp(std::string_view fraction, bool odd)
{
    if (fraction.size() <= moneyDecimals || fraction[moneyDecimals] < '5')
        return false;
    return odd || fraction[moneyDecimals] > '5'
           || fraction.find_first_not_of('0', moneyDecimals + 1) != std::string_view::npos;
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

std::optional<Currency> Currency::fromPlainText(QByteArrayView text)
{
    std::string_view rest(text.data(), static_cast<std::size_t>(text.size()));
    const bool negative = rest.starts_with('-');
    if (negative || rest.starts_with('+'))
        rest.remove_prefix(1);
    const std::string_view whole = takeDigits(rest);
    std::string_view fraction;
    if (rest.starts_with('.')) {
        rest.remove_prefix(1);
        fraction = takeDigits(rest);
    }
    if (!rest.empty() || (whole.empty() && fraction.empty()))
        return std::nullopt;
    std::int64_t scaled = 0; // below 0 until the end, so that the lowest value can be read too
    for (const char digit : whole)
        scaled = withDigit(scaled, digit);
    for (std::size_t at = 0; at < moneyDecimals; ++at)
        scaled = withDigit(scaled, at < fraction.size() ? fraction[at] : '0');
    if (roundsUp(fraction, scaled % 2 != 0) && qSubOverflow(scaled, std::int64_t{1}, &scaled))
        raiseAmountOverflow();
    if (!negative && qSubOverflow(std::int64_t{0}, scaled, &scaled))
        raiseAmountOverflow();
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
