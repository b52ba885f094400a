#include "plugins/VantoSalesPeriod/SalesPeriodReport.h"

namespace statistics {

namespace {

struct AmountColumn
{
    SalesPeriodReport::Amount amount;
    const char16_t *caption;
    int width;
};

/// In the order of the statement, behind the day.
constexpr AmountColumn lineColumns[] = {
    {SalesPeriodReport::Gross, u"판매금액", 88},   {SalesPeriodReport::Discount, u"할인", 76},
    {SalesPeriodReport::Returns, u"반품 건수", 66}, {SalesPeriodReport::Returned, u"반품금액", 84},
    {SalesPeriodReport::Net, u"순매출", 92},          {SalesPeriodReport::Taxed, u"과세", 88},
    {SalesPeriodReport::TaxFree, u"비과세", 84},  {SalesPeriodReport::UnknownTax, u"구분 없음", 76},
};

} // namespace

QString salesPeriod::ordersByDay()
{
    return QStringLiteral("SELECT OrdM_Date, COUNT(*) AS Orders FROM tPSOrderMaster "
                          "WHERE OrdM_Date BETWEEN '[FROM]' AND '[TO]' GROUP BY OrdM_Date");
}

QString salesPeriod::linesByDay()
{
    // The tax split follows the orders' own totals, in which returns are taken off.
    return QStringLiteral(
        "SELECT tPSOrderMaster.OrdM_Date, "
        "SUM(CASE WHEN OrdD_Count > 0 THEN OrdD_UnitPrice * OrdD_Count ELSE 0 END) AS Gross, "
        "SUM(CASE WHEN OrdD_Count > 0 THEN OrdD_HalinUnit * OrdD_Count ELSE 0 END) AS Discount, "
        "SUM(CASE WHEN OrdD_Count < 0 THEN 1 ELSE 0 END) AS Returns, "
        "SUM(CASE WHEN OrdD_Count < 0 THEN (OrdD_UnitPrice - OrdD_HalinUnit) * OrdD_Count ELSE 0 END) AS Returned, "
        "SUM((OrdD_UnitPrice - OrdD_HalinUnit) * OrdD_Count) AS Net, "
        "SUM(CASE WHEN PM_IsTaxed = 1 THEN (OrdD_UnitPrice - OrdD_HalinUnit) * OrdD_Count ELSE 0 END) AS Taxed, "
        "SUM(CASE WHEN PM_IsTaxed = 0 THEN (OrdD_UnitPrice - OrdD_HalinUnit) * OrdD_Count ELSE 0 END) AS TaxFree, "
        "SUM(CASE WHEN PM_IsTaxed IS NULL THEN (OrdD_UnitPrice - OrdD_HalinUnit) * OrdD_Count ELSE 0 END) AS UnknownTax "
        "FROM tPSOrderMaster INNER JOIN tPSOrderDetail ON tPSOrderMaster.OrdM_PK = tPSOrderDetail.OrdM_PK "
        "LEFT JOIN tPSProductMaster ON tPSOrderDetail.PM_PK = tPSProductMaster.PM_PK "
        "WHERE tPSOrderMaster.OrdM_Date BETWEEN '[FROM]' AND '[TO]' GROUP BY tPSOrderMaster.OrdM_Date");
}

SalesPeriodReport::SalesPeriodReport()
    : days_(Amounts)
{
}

std::vector<Figure> SalesPeriodReport::figures(const Period &period)
{
    days_.clear(period);
    Figure orders{salesPeriod::ordersByDay(), Figure::Slices::Days};
    orders.take = [this](const Record &row) { days_.add(row.date(0), Orders, row.amount(1)); };
    Figure lines{salesPeriod::linesByDay(), Figure::Slices::Days};
    lines.take = [this](const Record &row) {
        const QDate day = row.date(0);
        for (std::size_t column = 0; column < std::size(lineColumns); ++column)
            days_.add(day, lineColumns[column].amount, row.amount(int(column) + 1));
    };
    return {orders, lines};
}

Sheet SalesPeriodReport::sheet(int view) const
{
    const auto grain = Grain(view);
    const std::vector<runtime::Currency> totals = days_.totals();
    const bool unknownTax = !totals[UnknownTax].isZero();

    Sheet sheet;
    sheet.columns = {{QStringLiteral("날짜"), Column::Kind::Text, 130}, {QStringLiteral("거래 수"), Column::Kind::Number, 60}};
    for (const AmountColumn &column : lineColumns) {
        if (column.amount != UnknownTax || unknownTax)
            sheet.columns.push_back({QString::fromUtf16(column.caption), Column::Kind::Number, column.width});
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
        sheet.chart.series[0].values.push_back(line.amounts[Net]);
    }
    sheet.totals = cut(rowOfAmounts(QStringLiteral("합계"), totals));
    sheet.remark = QStringLiteral("순매출 = 판매금액 − 할인 + 반품금액 = 과세 + 비과세");
    return sheet;
}

} // namespace statistics
