#pragma once

#include "components/frame/DayTable.h"
#include "components/frame/Report.h"

namespace statistics {

/// Statements of the money taken by day. [FROM] and [TO] are days, both included.
namespace payPeriod {
/// tpstrans_Date, tpstrans_Operator, tpstrans_Method, IsAfter (1: dated after the order's day), Amount: sums of the ledger.
QString ledgerByDay();
/// LastDay of the ledger up to [TO].
QString lastDay();
} // namespace payPeriod

/// Money taken in a period, a row a day, week or month.
class PayPeriodReport : public Report
{
public:
    /// Columns behind the first. Cash to Bank were taken at the sale, the next three were received later, in the order of
    /// Medium. Refunded is negative; Net is Taken plus Refunded.
    enum Amount { Cash, Card, Bank, LateCash, LateCard, LateBank, Taken, Refunded, Net, Discounts, Cuts, Amounts };

    PayPeriodReport();

    QString title() const override { return QStringLiteral("기간별 수납 통계"); }
    QStringList views() const override { return DayTable::grains(); }
    QString lastDayStatement() const override { return payPeriod::lastDay(); }
    std::vector<Figure> figures(const Period &period) override;

private:
    Sheet makeSheet(int view) const override;
    void take(const Record &row);

    DayTable days_;
};

} // namespace statistics
