#include "fuzz/Fuzz.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/RuntimeError.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

using runtime::Currency;

namespace {

/// What the conversion gave, or why it did not.
template <typename Convert>
auto attempt(Convert convert, std::optional<runtime::ErrorNumber> &error)
{
    error.reset();
    try {
        return convert();
    } catch (const runtime::RuntimeError &raised) {
        demand(!raised.description().isEmpty(), "an error tells something");
        error = raised.number();
        return decltype(convert())();
    }
}

void convertText(const QString &text)
{
    const QVariant value(text);
    std::optional<runtime::ErrorNumber> error;
    const double number = attempt([&] { return runtime::CDbl(value); }, error);
    demand(runtime::IsNumeric(text) == (error != runtime::ErrorNumber::TypeMismatch),
           "IsNumeric tells what CDbl takes");
    const qint32 whole = attempt([&] { return runtime::CLng(value); }, error);
    if (!error)
        demand(std::abs(double(whole) - number) <= 0.5 || text.contains(u'&'), "CLng is next to the number");
    attempt([&] { return runtime::CInt(value); }, error);
    attempt([&] { return runtime::Val(text); }, error);
    const Currency money = attempt([&] { return runtime::CCur(value); }, error);
    demand(Currency::fromPlainText(money.toText().toLatin1()) == money, "money reads back from its text");
}

void calculate(std::int64_t a, std::int64_t b)
{
    using Wide = __int128;
    const auto fits = [](Wide wide) {
        return wide >= std::numeric_limits<std::int64_t>::min() && wide <= std::numeric_limits<std::int64_t>::max();
    };
    const Currency first = Currency::fromScaled(a);
    const Currency second = Currency::fromScaled(b);
    std::optional<runtime::ErrorNumber> error;
    const auto agrees = [&](Currency given, Wide exact) {
        demand(error ? error == runtime::ErrorNumber::Overflow && !fits(exact) : given.scaled() == exact,
               "exact, or an overflow");
    };
    agrees(attempt([&] { return first + second; }, error), Wide(a) + b);
    agrees(attempt([&] { return first - second; }, error), Wide(a) - b);
    agrees(attempt([&] { return first * b; }, error), Wide(a) * b);
    agrees(attempt([&] { return -first; }, error), -Wide(a));

    const Currency won = Currency::fromScaled(a / Currency::Scale * Currency::Scale);
    demand(runtime::CCur(runtime::money(won)) == won, "an amount on show reads back");
}

} // namespace

/// Two amounts, then a pattern, then a text.
void fuzz(const QByteArray &given)
{
    QByteArray bytes = given;
    std::int64_t amounts[2]{};
    std::memcpy(amounts, bytes.constData(), std::min(sizeof amounts, std::size_t(bytes.size())));
    calculate(amounts[0], amounts[1]);
    bytes.remove(0, sizeof amounts);
    const QString pattern = takeText(bytes);
    const QString text = QString::fromUtf8(bytes);
    convertText(text);
    for (const QVariant &value :
         {QVariant(text), QVariant::fromValue(Currency::fromScaled(amounts[0])), QVariant(qlonglong(amounts[0])),
          QVariant(), QVariant(QDate::fromJulianDay(amounts[1] % 5'000'000))}) {
        std::optional<runtime::ErrorNumber> error;
        attempt([&] { return runtime::Format(value, pattern); }, error);
    }
}
