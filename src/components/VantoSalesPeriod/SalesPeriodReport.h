#pragma once

#include "components/frame/TradeReport.h"

#include <array>

namespace statistics {

/// Statements of the sales, grouped by keys of the orders.
namespace salesPeriod {
/// The keys, then Orders: the number of orders on the days [FROM] to [TO].
QString orders(const QString &keys, const QString &condition = {});
/// The keys, then PM_IsTaxed (NULL: the product is gone), Way (1 sold, -1 came back, 0 no pieces), then of these lines in
/// the period's orders [FROM] to [TO] their number, Gross and Discount, both negative for what came back.
QString lines(const QString &keys, const QString &condition = {});
} // namespace salesPeriod

/// Sales of a period.
class SalesPeriodReport : public TradeReport
{
public:
    /// Net is Gross less Discount plus Returned (negative), and Taxed plus TaxFree plus UnknownTax.
    enum Amount { Orders, Gross, Discount, Returns, Returned, Net, Taxed, TaxFree, UnknownTax, Amounts };

    SalesPeriodReport()
        : TradeReport(Amounts, Net)
    {
    }

    QString title() const override { return QStringLiteral("기간별 매출 통계"); }

private:
    using Sums = std::array<Sum, Amounts>;

    static Sums ordersOf(const Record &row, int column);
    static Sums linesOf(const Record &row, int column);

    std::vector<Figure> figuresBy(By by, const Add &add) const override;
    std::vector<Column> amountColumns(const std::vector<Sum> &totals) const override;
    QString remark() const override;
    Chart dayChart() const override;
    std::vector<Sum> bars(const std::vector<Sum> &amounts) const override { return {amounts[Net]}; }
    void tellOrders(Behind &behind, std::size_t amount, const CustomerScope &customers) const override;
};

} // namespace statistics
