#pragma once

#include "components/frame/TradeReport.h"

#include <array>

namespace statistics {

/// Statements of the money taken.
namespace payPeriod {
/// The keys, then tpstrans_Operator, tpstrans_Method, IsAfter (1: dated after the order's day), Amount: sums of the ledger on
/// the days [FROM] to [TO].
QString ledger(const QString &keys, const QString &condition = {});
/// LastDay of the ledger up to [TO].
QString lastDay();
} // namespace payPeriod

/// Money taken in a period.
class PayPeriodReport : public TradeReport
{
public:
    /// Cash to Bank were taken at the sale, the next three were received later, in the order of Medium. Refunded is negative;
    /// Net is Taken plus Refunded.
    enum Amount { Cash, Card, Bank, LateCash, LateCard, LateBank, Taken, Refunded, Net, Discounts, Cuts, Amounts };

    PayPeriodReport()
        : TradeReport(Amounts, Net)
    {
    }

    QString title() const override { return QStringLiteral("기간별 수납 통계"); }
    QString lastDayStatement() const override { return payPeriod::lastDay(); }

private:
    using Sums = std::array<Sum, Amounts>;

    static std::optional<Sums> amountsOf(const Record &row, int column);

    std::vector<Figure> figuresBy(By by, const Add &add) const override;
    std::vector<Column> amountColumns(const std::vector<Sum> &totals) const override;
    QString remark() const override;
    Chart dayChart() const override;
    std::vector<Sum> bars(const std::vector<Sum> &amounts) const override;
    void tellOrders(Behind &behind, std::size_t amount, const CustomerScope &customers) const override;
};

} // namespace statistics
