#include "components/VantoSalesPeriod/SalesPeriodReport.h"

namespace statistics {

namespace {

struct AmountColumn
{
    SalesPeriodReport::Amount amount;
    const char16_t *caption;
    int width;
};

/// In the order of Amount, behind the number of orders.
constexpr AmountColumn lineColumns[] = {
    {SalesPeriodReport::Gross, u"판매금액", 88},   {SalesPeriodReport::Discount, u"할인", 76},
    {SalesPeriodReport::Returns, u"반품건수", 66}, {SalesPeriodReport::Returned, u"반품금액", 84},
    {SalesPeriodReport::Net, u"순매출", 92},       {SalesPeriodReport::Taxed, u"과세", 88},
    {SalesPeriodReport::TaxFree, u"비과세", 84},   {SalesPeriodReport::UnknownTax, u"구분없음", 76},
};

} // namespace

QString salesPeriod::ordersByDay()
{
    return QStringLiteral("SELECT OrdM_Date, COUNT(*) AS Orders FROM tPSOrderMaster "
                          "WHERE OrdM_Date BETWEEN '[FROM]' AND '[TO]' GROUP BY OrdM_Date");
}

QString salesPeriod::linesByDay()
{
    const QString way = QStringLiteral("CASE WHEN OrdD_Count > 0 THEN 1 WHEN OrdD_Count < 0 THEN -1 ELSE 0 END");
    return QStringLiteral("SELECT tPSOrderMaster.OrdM_Date, PM_IsTaxed, %1 AS Way, COUNT(*) AS Lines, "
                          "SUM(OrdD_UnitPrice * OrdD_Count) AS Gross, "
                          "SUM(COALESCE(OrdD_HalinUnit, 0) * OrdD_Count) AS Discount FROM %2"
                          "GROUP BY tPSOrderMaster.OrdM_Date, PM_IsTaxed, %1")
        .arg(way, linesOfOrders(
                      QStringLiteral("LEFT JOIN tPSProductMaster ON tPSOrderDetail.PM_PK = tPSProductMaster.PM_PK ")));
}

SalesPeriodReport::SalesPeriodReport()
    : days_(Amounts)
{
}

void SalesPeriodReport::takeLines(const Record &row)
{
    const QDate day = row.date(0);
    const int way = row.key(2);
    const Sum gross = row.amount(4);
    const Sum discount = row.amount(5);
    if (way > 0) {
        days_.add(day, Gross, gross);
        days_.add(day, Discount, discount);
    } else if (way < 0) {
        days_.add(day, Returns, row.amount(3));
        days_.add(day, Returned, gross - discount);
    }
    days_.add(day, Net, gross - discount);
    // The tax split follows the orders' own totals, in which returns are taken off.
    days_.add(day, row.isNull(1) ? UnknownTax : row.flag(1) ? Taxed : TaxFree, gross - discount);
}

std::vector<Figure> SalesPeriodReport::figures(const Period &period)
{
    days_.clear(period);
    Figure orders{salesPeriod::ordersByDay(), Figure::Slices::Days};
    orders.take = [this](const Record &row) { days_.add(row.date(0), Orders, row.amount(1)); };
    Figure lines{salesPeriod::linesByDay(), Figure::Slices::Keys, orderBounds()};
    lines.take = [this](const Record &row) { takeLines(row); };
    return {orders, lines};
}

Sheet SalesPeriodReport::makeSheet(int view) const
{
    const auto grain = Grain(view);
    const std::vector<Sum> totals = days_.totals();
    const bool unknownTax = totals[UnknownTax] != Sum();

    Sheet sheet;
    sheet.columns = {{QStringLiteral("날짜"), Column::Kind::Text, 130},
                     {QStringLiteral("거래건수"), Column::Kind::Number, 60}};
    for (const AmountColumn &column : lineColumns) {
        if (column.amount != UnknownTax || unknownTax)
            sheet.columns.push_back({QString::fromUtf16(column.caption),
                                     column.amount == Returns ? Column::Kind::Number : Column::Kind::Money,
                                     column.width});
    }
    const auto cut = [&](Row row) {
        row.resize(sheet.columns.size());
        return row;
    };
    sheet.chart.title = QStringLiteral("순매출");
    sheet.chart.series = {{QStringLiteral("순매출"), {}}};
    const std::vector<DayTable::Line> lines = days_.lines(grain);
    for (const DayTable::Line &line : lines) {
        sheet.rows.push_back(cut(rowOfAmounts(rowCaption(line.period, grain), line.amounts)));
        sheet.chart.categories << barCaption(line.period, grain);
        sheet.chart.places.push_back(calendarPlace(line.period, grain));
        sheet.chart.series[0].values.push_back(line.amounts[Net].orZero());
    }
    sheet.totals = cut(rowOfAmounts(QStringLiteral("합계"), totals));
    sheet.remark = QStringLiteral("순매출 = 판매금액 − 할인 + 반품금액 = 과세 + 비과세");
    return sheet;
}

} // namespace statistics
