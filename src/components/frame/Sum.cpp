#include "components/frame/Sum.h"

#include "platform/runtime/RuntimeError.h"

namespace statistics {

namespace {

template <typename Reckoning>
Sum reckoned(Reckoning reckoning)
{
    try {
        return reckoning();
    } catch (const runtime::RuntimeError &error) {
        if (error.number() != runtime::ErrorNumber::Overflow)
            throw;
        return Sum::unknown();
    }
}

} // namespace

Sum Sum::unknown()
{
    Sum sum;
    sum.amount_.reset();
    return sum;
}

Sum Sum::notBelowZero() const
{
    return isKnown() && *this < Sum() ? Sum() : *this;
}

Sum &Sum::operator+=(const Sum &other)
{
    *this = isKnown() && other.isKnown() ? reckoned([&] { return Sum(*amount_ + *other.amount_); }) : unknown();
    return *this;
}

Sum Sum::operator-() const
{
    return isKnown() ? reckoned([&] { return Sum(-*amount_); }) : *this;
}

Sum operator*(const Sum &amount, std::int64_t count)
{
    return amount.isKnown() ? reckoned([&] { return Sum(*amount.amount_ * count); }) : amount;
}

Sum::operator Cell() const
{
    return isKnown() ? Cell(*amount_) : Cell(unknownSign);
}

Sum Sum::of(const Cell &cell)
{
    if (const auto *number = std::get_if<runtime::Currency>(&cell))
        return *number;
    return std::holds_alternative<QString>(cell) ? unknown() : Sum();
}

} // namespace statistics
