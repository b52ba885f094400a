#pragma once

#include "components/frame/Period.h"
#include "components/frame/Sum.h"

#include <map>
#include <span>

namespace statistics {

/// Amounts by day in a fixed number of columns, put together into rows of days, weeks or months.
class DayTable
{
public:
    struct Line
    {
        Period period;
        std::vector<Sum> amounts;
    };

    explicit DayTable(std::size_t columns)
        : columns_(columns)
    {
    }

    void clear(const Period &period);
    /// One amount a column.
    void add(QDate day, std::span<const Sum> amounts);

    /// Rows in the order of their days; days without anything are left out.
    std::vector<Line> lines(Grain grain) const;
    std::vector<Sum> totals() const;

    /// "일별", "주별", "월별", in the order of Grain.
    static QStringList grains();

private:
    std::size_t columns_;
    Period period_;
    std::map<QDate, std::vector<Sum>> days_;
};

/// A row that begins with a text.
Row rowOfAmounts(const QString &caption, const std::vector<Sum> &amounts);

} // namespace statistics
