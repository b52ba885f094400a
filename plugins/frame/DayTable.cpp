#include "plugins/frame/DayTable.h"

namespace statistics {

void DayTable::clear(const Period &period)
{
    period_ = period;
    days_.clear();
}

void DayTable::add(QDate day, std::size_t column, runtime::Currency amount)
{
    std::vector<runtime::Currency> &amounts = days_[day];
    amounts.resize(columns_);
    amounts[column] += amount;
}

std::vector<DayTable::Line> DayTable::lines(Grain grain) const
{
    std::vector<Line> lines;
    for (const auto &[day, amounts] : days_) {
        const Period period = rowOf(day, grain, period_);
        if (lines.empty() || lines.back().period != period)
            lines.push_back({period, std::vector<runtime::Currency>(columns_)});
        for (std::size_t column = 0; column < columns_; ++column)
            lines.back().amounts[column] += amounts[column];
    }
    return lines;
}

std::vector<runtime::Currency> DayTable::totals() const
{
    std::vector<runtime::Currency> sums(columns_);
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

Row rowOfAmounts(const QString &caption, const std::vector<runtime::Currency> &amounts)
{
    Row row{caption};
    row.insert(row.end(), amounts.begin(), amounts.end());
    return row;
}

} // namespace statistics
