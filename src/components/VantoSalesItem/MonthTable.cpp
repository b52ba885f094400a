#include "components/VantoSalesItem/MonthTable.h"

#include <algorithm>

namespace statistics {

void MonthTable::clear(const Period &period)
{
    period_ = period;
    months_ = monthsOf(period, mostMonths);
    products_.clear();
}

Period MonthTable::periodOf(std::size_t month, Year year) const
{
    return year == This ? months_[month] : yearBefore(months_[month]);
}

void MonthTable::add(int product, std::size_t month, Year year, const Sum &amount)
{
    std::vector<Sum> &amounts = products_[product];
    amounts.resize(months_.size() * Years);
    amounts[months_.size() * year + month] += amount;
}

std::vector<MonthTable::Line> MonthTable::lines() const
{
    std::vector<Line> lines;
    for (const auto &[product, amounts] : products_) {
        const auto half = amounts.begin() + std::ptrdiff_t(months_.size());
        Line line{product, {amounts.begin(), half}, {}, {}};
        for (auto amount = amounts.begin(); amount != amounts.end(); ++amount)
            (amount < half ? line.total : line.lastYear) += *amount;
        lines.push_back(std::move(line));
    }
    std::stable_sort(lines.begin(), lines.end(), [](const Line &a, const Line &b) { return a.total > b.total; });
    return lines;
}

std::vector<Sum> MonthTable::totals(Year year) const
{
    std::vector<Sum> sums(months_.size());
    for (const auto &[product, amounts] : products_) {
        for (std::size_t month = 0; month < sums.size(); ++month)
            sums[month] += amounts[months_.size() * year + month];
    }
    return sums;
}

QString MonthTable::captionOf(std::size_t month) const
{
    const Period &days = months_[month];
    const QString last = days.last.toString(QStringLiteral("yyyy-MM"));
    return rowOf(days.last, Grain::Month, days) == days ? last : QStringLiteral("~ ") + last;
}

} // namespace statistics
