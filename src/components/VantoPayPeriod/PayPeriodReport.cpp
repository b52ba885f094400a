#include "components/VantoPayPeriod/PayPeriodReport.h"

#include "components/frame/Ledger.h"

namespace statistics {

namespace {

struct PayColumn
{
    const char16_t *caption;
    int width;
};

/// In the order of PayPeriodReport::Amount.
constexpr PayColumn payColumns[] = {
    {u"현금", 76},     {u"카드", 76}, {u"통장", 62},   {u"현금(미수)", 72}, {u"카드(미수)", 72}, {u"통장(미수)", 72},
    {u"수납합계", 84}, {u"환불", 74}, {u"순수납", 84}, {u"할인", 66},       {u"절사", 56},
};
static_assert(std::size(payColumns) == PayPeriodReport::Amounts);

} // namespace

QString payPeriod::ledger(const QString &keys, const QString &condition)
{
    return QStringLiteral("SELECT %3, tpstrans_Operator, tpstrans_Method, %2 AS IsAfter, "
                          "SUM(tpstrans_Money) AS Amount FROM %1WHERE tpstrans_Date BETWEEN '[FROM]' AND '[TO]' %4"
                          "GROUP BY %3, tpstrans_Operator, tpstrans_Method, %2")
        .arg(ledgerWithOrders(), afterItsDay(), keys, condition);
}

QString payPeriod::lastDay()
{
    return QStringLiteral("SELECT MAX(tpstrans_Date) AS LastDay FROM tPSTransaction WHERE tpstrans_Date <= '[TO]'");
}

/// What a row of payPeriod::ledger adds to the amounts, its keys ending before that column; nothing for a kind of operation
/// that moves no money.
std::optional<PayPeriodReport::Sums> PayPeriodReport::amountsOf(const Record &row, int column)
{
    Sums sums{};
    QByteArray room;
    const QUtf8StringView method = row.utf8(column + 1, room);
    const Sum amount = row.amount(column + 3);
    switch (row.key(column)) {
    case Operator::Payment:
        sums[std::size_t(mediumOf(method)) + (isReceivedLater(method, row.flag(column + 2)) ? LateCash : Cash)] =
            amount;
        sums[Taken] = sums[Net] = amount;
        break;
    case Operator::Refund:
        sums[Refunded] = sums[Net] = -amount;
        break;
    case Operator::Discount:
        sums[Discounts] = amount;
        break;
    case Operator::Cut:
        sums[Cuts] = amount;
        break;
    default:
        return std::nullopt;
    }
    return sums;
}

std::vector<Figure> PayPeriodReport::figuresBy(By by, const Add &add) const
{
    Figure ledger{
        payPeriod::ledger(by == By::Day ? QStringLiteral("tpstrans_Date") : QStringLiteral("tpstrans_Customer_PK")),
        Figure::Slices::Days};
    ledger.take = [add](const Record &row) {
        if (const std::optional<Sums> sums = amountsOf(row, 1))
            add(row, *sums);
    };
    return {ledger};
}

void PayPeriodReport::tellOrders(Behind &behind, std::size_t amount, const CustomerScope &customers) const
{
    behind.orders = {payPeriod::ledger(QStringLiteral("OrdM_PK, tpstrans_Customer_PK, tpstrans_Date"),
                                       customers.condition(QStringLiteral("tpstrans_Customer_PK"))),
                     Figure::Slices::Days};
    behind.amount = [amount, customers](const Record &row) {
        const std::optional<Sums> sums = customers.holds(row.key(1)) ? amountsOf(row, 3) : std::nullopt;
        return sums ? (*sums)[amount] : Sum();
    };
}

std::vector<Column> PayPeriodReport::amountColumns(const std::vector<Sum> &) const
{
    std::vector<Column> columns;
    for (const PayColumn &column : payColumns)
        columns.push_back({QString::fromUtf16(column.caption), Column::Kind::Money, column.width});
    return columns;
}

QString PayPeriodReport::remark() const
{
    return QStringLiteral(
        "(미수)는 판매일이 지나 받았거나 미수로 받은 금액입니다. 환불은 음수입니다. 순수납 = 수납합계 + 환불");
}

Chart PayPeriodReport::dayChart() const
{
    Chart chart;
    chart.title = QStringLiteral("수납 (미수금 수납 포함)");
    chart.series = {{QStringLiteral("현금"), {}}, {QStringLiteral("카드"), {}}, {QStringLiteral("통장"), {}}};
    return chart;
}

std::vector<Sum> PayPeriodReport::bars(const std::vector<Sum> &amounts) const
{
    return {amounts[Cash] + amounts[LateCash], amounts[Card] + amounts[LateCard], amounts[Bank] + amounts[LateBank]};
}

} // namespace statistics
