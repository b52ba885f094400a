#pragma once

#include "components/frame/ByKey.h"
#include "components/frame/KeptTexts.h"
#include "components/frame/Report.h"

#include <array>
#include <cstdint>
#include <functional>
#include <tuple>

namespace statistics {

/// Statements of one day, [FROM].
namespace oneDay {
/// OrdM_PK, Cust_PK, name, sn, OrdM_Total: the orders of the day.
QString orders();
/// OrdM_PK, Cust_PK, then sums over its lines: Gross, Discount, Returned (negative), Net.
QString linesByOrder();
/// tpstrans_OrderM_PK, tpstrans_Customer_PK, name, sn, tpstrans_Operator, tpstrans_Method, IsAfter (1: dated after the
/// order's day), Amount: the ledger of the day.
QString ledgerByOrder(Summed summed = Summed::Yes);
/// OrdM_PK, Cust_PK, tpstrans_Operator, tpstrans_Method, Amount: what was settled of the day's orders up to that day. What
/// comes later changes nothing of it.
QString settledByOrder(Summed summed = Summed::Yes);
} // namespace oneDay

/// One day for the evening's count of the drawer: sales, money by medium, outstanding money, a row an order. The money
/// of a row is what moved on that day, so orders of other days stand there too.
class OneDayReport : public Report
{
public:
    /// Amounts of a row. PaidCash to PaidBank and RefundCash to RefundBank are in the order of Medium.
    enum Amount {
        Gross,
        Discount,
        Returned,
        Net,
        Forgone, ///< discounts and cuts at the till
        PaidCash,
        PaidCard,
        PaidBank,
        RefundCash, ///< money that goes out is negative
        RefundCard,
        RefundBank,
        Late, ///< the part of the payments that was received later than at the sale
        Owed, ///< what the day left to be received; below zero where too much was
        Amounts
    };

    QString title() const override { return QStringLiteral("일일 통계"); }
    Asks asks() const override { return Asks::Day; }
    std::vector<Figure> figures(const Period &period) override;

private:
    using Sums = std::array<Sum, Amounts>;
    /// Of the day or not; then the order and the customer, since the ledger holds keys of the desk's receipts too.
    using Key = std::tuple<bool, int, int>;
    struct HashOfKey
    {
        std::size_t operator()(const Key &key) const
        {
            return std::hash<std::uint64_t>()(std::uint64_t(std::uint32_t(std::get<1>(key))) << 32
                                              | std::uint32_t(std::get<2>(key)));
        }
    };
    struct Line
    {
        QByteArrayView chart; ///< in UTF-8, as the name; both lie in texts_
        QByteArrayView name;
        Sums sums{};
        Sum unpaidAtSale; ///< what was left before payments against it
    };

    Sheet makeSheet(int view) const override;
    void takeOrder(const Record &row);
    void takeLines(const Record &row);
    void takeLedger(const Record &row);
    void takeSettled(const Record &row);
    std::vector<SummaryLine> summary(const Sums &totals) const;

    ByKey<Line, Key, HashOfKey> lines_;
    KeptTexts texts_;
    Sum discounts_; ///< at the till
    Sum cuts_;
};

} // namespace statistics
