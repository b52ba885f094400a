#pragma once

#include "components/frame/DayTable.h"
#include "components/frame/Report.h"

namespace statistics {

/// Statements of the sales by day.
namespace salesPeriod {
/// OrdM_Date, Orders: the number of orders on the days [FROM] to [TO].
QString ordersByDay();
/// OrdM_Date, PM_IsTaxed (NULL: the product is gone), Way (1 sold, -1 came back, 0 no pieces), then of these lines in
/// the period's orders [FROM] to [TO] their number, Gross and Discount, both negative for what came back.
QString linesByDay();
} // namespace salesPeriod

/// Sales of a period, a row a day, week or month.
class SalesPeriodReport : public Report
{
public:
    /// Columns behind the first. Net is Gross less Discount plus Returned (negative), and Taxed plus TaxFree plus UnknownTax.
    enum Amount { Orders, Gross, Discount, Returns, Returned, Net, Taxed, TaxFree, UnknownTax, Amounts };

    SalesPeriodReport();

    QString title() const override { return QStringLiteral("기간별 매출 통계"); }
    QStringList views() const override { return DayTable::grains(); }
    std::vector<Figure> figures(const Period &period) override;

private:
    Sheet makeSheet(int view) const override;
    void takeLines(const Record &row);

    DayTable days_;
};

} // namespace statistics
