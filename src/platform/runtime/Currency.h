#pragma once

#include <QByteArrayView>
#include <QMetaType>
#include <QString>

#include <compare>
#include <cstdint>
#include <optional>

namespace runtime {

/// Money as a 64-bit integer scaled by 10,000. Every operation that leaves the range raises Overflow;
/// nothing passes through floating point but fromDouble().
class Currency
{
public:
    static constexpr std::int64_t Scale = 10'000;

    constexpr Currency() = default;
    /// Whole won.
    static Currency fromWon(std::int64_t won);
    /// The scaled value as it is stored: 10,000 is one won.
    static constexpr Currency fromScaled(std::int64_t scaled) { return Currency(scaled); }
    /// Rounds half to even at the fourth decimal.
    static Currency fromDouble(double value);
    /// Reads plain digits with an optional sign and decimals, "-1234.5", and rounds as fromDouble() does; nothing for any
    /// other text. No grouping, no won sign.
    static std::optional<Currency> fromPlainText(QByteArrayView text);

    constexpr std::int64_t scaled() const { return scaled_; }
    /// Whole won, rounded half to even.
    std::int64_t toWon() const;
    double toDouble() const { return static_cast<double>(scaled_) / Scale; }
    /// Plain digits, a fraction only when one exists, "-1234.5".
    QString toText() const;
    constexpr bool isZero() const { return scaled_ == 0; }

    Currency operator-() const;
    Currency &operator+=(Currency other);
    Currency &operator-=(Currency other);
    friend Currency operator+(Currency a, Currency b) { return a += b; }
    friend Currency operator-(Currency a, Currency b) { return a -= b; }
    friend Currency operator*(Currency amount, std::int64_t count);
    friend Currency operator*(std::int64_t count, Currency amount) { return amount * count; }
    friend constexpr auto operator<=>(Currency, Currency) = default;

private:
    explicit constexpr Currency(std::int64_t scaled)
        : scaled_(scaled)
    {
    }

    std::int64_t scaled_ = 0;
};

} // namespace runtime

Q_DECLARE_METATYPE(runtime::Currency)
