#pragma once

#include "components/frame/Period.h"
#include "components/frame/Sum.h"

#include <map>
#include <vector>

namespace statistics {

/// Amounts of products by the months of a period, beside those of the same months a year before.
class MonthTable
{
public:
    static constexpr std::size_t mostMonths = 12; ///< what lies earlier stands in the first
    enum Year { This, Last, Years };
    struct Line
    {
        int product = 0;
        std::vector<Sum> months;
        Sum total;
        Sum lastYear;
    };

    void clear(const Period &period);
    const std::vector<Period> &months() const { return months_; }
    /// Of that month, this year or the year before.
    Period periodOf(std::size_t month, Year year) const;
    Period whole(Year year) const { return year == This ? period_ : yearBefore(period_); }
    void add(int product, std::size_t month, Year year, const Sum &amount);

    /// The products with the most this year first.
    std::vector<Line> lines() const;
    /// One amount a month.
    std::vector<Sum> totals(Year year) const;

    /// "2026-03", or "~ 2025-06" for all that lies earlier.
    QString captionOf(std::size_t month) const;

private:
    Period period_;
    std::vector<Period> months_;
    std::map<int, std::vector<Sum>> products_; ///< this year's months, then last year's
};

} // namespace statistics
