#include "components/frame/DayTable.h"

namespace statistics {

void DayTable::clear(const Period &period)
{
    period_ = period;
    days_.clear();
}

void DayTable::add(QDate day, std::span<const Sum> amounts)
{
    std::vector<Sum> &sums = days_[day];
    sums.resize(columns_);
    for (std::size_t column = 0; column < columns_; ++column)
        sums[column] += amounts[column];
}

std::vector<DayTable::Line> DayTable::lines(Grain grain) const
{
    std::vector<Line> lines;
    for (const auto &[day, amounts] : days_) {
        const Period period = rowOf(day, grain, period_);
        if (lines.empty() || lines.back().period != period)
            lines.push_back({period, std::vector<Sum>(columns_)});
        for (std::size_t column = 0; column < columns_; ++column)
            lines.back().amounts[column] += amounts[column];
    }
    return lines;
}

std::vector<Sum> DayTable::totals() const
{
    std::vector<Sum> sums(columns_);
    for (const auto &[day, amounts] : days_) {
        for (std::size_t column = 0; column < columns_; ++column)
            sums[column] += amounts[column];
    }
    return sums;
}

QStringList DayTable::grains()
{
    return {QStringLiteral("일별"), QStringLiteral("주별"), QStringLiteral("월별")};
}

Row rowOfAmounts(const QString &caption, const std::vector<Sum> &amounts)
{
    Row row{caption};
    row.insert(row.end(), amounts.begin(), amounts.end());
    return row;
}

} // namespace statistics
