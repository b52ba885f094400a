#pragma once

#include "plugins/frame/DayTable.h"
#include "plugins/frame/Report.h"

namespace statistics {

/// Statements of the sales by day. [FROM] and [TO] are days, both included.
namespace salesPeriod {
/// OrdM_Date, Orders: the number of orders.
QString ordersByDay();
/// OrdM_Date, then sums over the lines of the day: Gross and Discount of what was sold, Returns (lines) and Returned
/// (negative) of what came back, Net of both, which Taxed, TaxFree and UnknownTax (the product is gone) add up to.
QString linesByDay();
} // namespace salesPeriod

/// Sales of a period, a row a day, week or month.
class SalesPeriodReport : public Report
{
public:
    /// Columns behind the first.
    enum Amount { Orders, Gross, Discount, Returns, Returned, Net, Taxed, TaxFree, UnknownTax, Amounts };

    SalesPeriodReport();

    QString title() const override { return QStringLiteral("기간별 매출 통계"); }
    QStringList views() const override { return DayTable::grains(); }
    std::vector<Figure> figures(const Period &period) override;
    Sheet sheet(int view) const override;

private:
    DayTable days_;
};

} // namespace statistics
