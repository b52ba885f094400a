#pragma once

#include "components/frame/Sheet.h"
#include "platform/runtime/Currency.h"

#include <compare>
#include <cstdint>
#include <optional>

namespace statistics {

/// An exact amount, or the knowledge that there is none: a cell that cannot be read, or an amount beyond what can be held.
/// Whatever such a one goes into is unknown too, so that no total pretends to be whole.
class Sum
{
public:
    Sum() = default;              ///< zero
    Sum(runtime::Currency amount) // NOLINT: an amount is a sum
        : amount_(amount)
    {
    }
    static Sum unknown();

    bool isKnown() const { return amount_.has_value(); }
    /// For lengths of a chart, where an unknown one has no bar.
    runtime::Currency orZero() const { return amount_.value_or(runtime::Currency()); }
    /// Zero where it is below; an unknown one stays so.
    Sum notBelowZero() const;

    Sum &operator+=(const Sum &other);
    Sum &operator-=(const Sum &other) { return *this += -other; }
    Sum operator-() const;
    friend Sum operator+(Sum a, const Sum &b) { return a += b; }
    friend Sum operator-(Sum a, const Sum &b) { return a -= b; }
    friend Sum operator*(const Sum &amount, std::int64_t count);
    /// An unknown one comes before all others.
    friend auto operator<=>(const Sum &, const Sum &) = default;

    /// The number, or the sign of an unknown one.
    operator Cell() const; // NOLINT: a sum is shown as it is
    /// What stands in a column of numbers; nothing is zero.
    static Sum of(const Cell &cell);

private:
    std::optional<runtime::Currency> amount_ = runtime::Currency();
};

} // namespace statistics
