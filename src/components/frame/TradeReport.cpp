#include "components/frame/TradeReport.h"

namespace statistics {

void TradeReport::forget(const Period &period)
{
    period_ = period;
    days_.clear(period);
    customers_.clear();
}

std::vector<Figure> TradeReport::figures(const Period &period)
{
    forget(period);
    return figuresBy(By::Day,
                     [this](const Record &row, std::span<const Sum> amounts) { days_.add(row.date(0), amounts); });
}

std::vector<Figure> TradeReport::figuresOf(int view, const Period &period)
{
    if (view != customerView)
        return figures(period);
    forget(period);
    std::vector<Figure> figures = figuresBy(
        By::Customer, [this](const Record &row, std::span<const Sum> amounts) { customers_.add(row.key(0), amounts); });
    figures.push_back(customers_.names());
    return figures;
}

Sheet TradeReport::makeSheet(int view) const
{
    Sheet sheet;
    sheet.columns = amountColumns(view == customerView ? customers_.totals() : days_.totals());
    sheet.remark = remark();
    if (view == customerView)
        customers_.fill(sheet);
    else
        fillDays(sheet, Grain(view));
    return sheet;
}

void TradeReport::fillDays(Sheet &sheet, Grain grain) const
{
    sheet.columns.insert(sheet.columns.begin(), {QStringLiteral("날짜"), Column::Kind::Text, 128});
    const auto cutRow = [&sheet](const QString &caption, const std::vector<Sum> &amounts) {
        Row row = rowOfAmounts(caption, amounts);
        row.resize(sheet.columns.size());
        return row;
    };
    sheet.chart = dayChart();
    const std::vector<DayTable::Line> lines = days_.lines(grain);
    for (const DayTable::Line &line : lines) {
        sheet.rows.push_back(cutRow(rowCaption(line.period, grain), line.amounts));
        sheet.chart.categories << barCaption(line.period, grain);
        sheet.chart.places.push_back(calendarPlace(line.period, grain));
        const std::vector<Sum> heights = bars(line.amounts);
        for (std::size_t series = 0; series < heights.size(); ++series)
            sheet.chart.series[series].values.push_back(heights[series].orZero());
    }
    sheet.totals = cutRow(QStringLiteral("합계"), days_.totals());
}

std::optional<Behind> TradeReport::behind(int view, int row, int column) const
{
    const std::size_t texts = view == customerView ? 2 : 1;
    const std::size_t place = std::size_t(column) < texts ? texts + result_ : std::size_t(column);
    const Sheet shown = makeSheet(view);
    Behind behind{QStringLiteral("합계"), shown.columns[place], {}, period_, {}, {}};
    CustomerScope customers;
    if (row < 0) {
        behind.figure = shown.totals[place];
    } else {
        behind.figure = shown.rows[std::size_t(row)][place];
        if (view == customerView)
            customers = customers_.scopeOf(std::size_t(row));
        else
            behind.period = days_.lines(Grain(view))[std::size_t(row)].period;
        behind.of = view == customerView ? customers.caption : plainText(shown.rows[std::size_t(row)][0]);
    }
    tellOrders(behind, place - texts, customers);
    return behind;
}

} // namespace statistics
