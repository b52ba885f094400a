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

QString payPeriod::ledgerByDay()
{
    return QStringLiteral("SELECT tpstrans_Date, tpstrans_Operator, tpstrans_Method, %2 AS IsAfter, "
                          "SUM(tpstrans_Money) AS Amount FROM %1WHERE tpstrans_Date BETWEEN '[FROM]' AND '[TO]' "
                          "GROUP BY tpstrans_Date, tpstrans_Operator, tpstrans_Method, %2")
        .arg(ledgerWithOrders(), afterItsDay());
}

QString payPeriod::lastDay()
{
    return QStringLiteral("SELECT MAX(tpstrans_Date) AS LastDay FROM tPSTransaction WHERE tpstrans_Date <= '[TO]'");
}

PayPeriodReport::PayPeriodReport()
    : days_(Amounts)
{
}

void PayPeriodReport::take(const Record &row)
{
    const QDate day = row.date(0);
    const QString method = row.text(2);
    const Sum amount = row.amount(4);
    switch (row.key(1)) {
    case Operator::Payment:
        days_.add(day, std::size_t(mediumOf(method)) + (isReceivedLater(method, row.flag(3)) ? LateCash : Cash),
                  amount);
        days_.add(day, Taken, amount);
        days_.add(day, Net, amount);
        break;
    case Operator::Refund:
        days_.add(day, Refunded, -amount);
        days_.add(day, Net, -amount);
        break;
    case Operator::Discount:
        days_.add(day, Discounts, amount);
        break;
    case Operator::Cut:
        days_.add(day, Cuts, amount);
        break;
    default: // no kind of operation that moves money
        break;
    }
}

std::vector<Figure> PayPeriodReport::figures(const Period &period)
{
    days_.clear(period);
    Figure ledger{payPeriod::ledgerByDay(), Figure::Slices::Days};
    ledger.take = [this](const Record &row) { take(row); };
    return {ledger};
}

Sheet PayPeriodReport::makeSheet(int view) const
{
    const auto grain = Grain(view);
    Sheet sheet;
    sheet.columns = {{QStringLiteral("날짜"), Column::Kind::Text, 128}};
    for (const PayColumn &column : payColumns)
        sheet.columns.push_back({QString::fromUtf16(column.caption), Column::Kind::Money, column.width});
    sheet.chart.title = QStringLiteral("수납 (미수금 수납 포함)");
    sheet.chart.series = {{QStringLiteral("현금"), {}}, {QStringLiteral("카드"), {}}, {QStringLiteral("통장"), {}}};
    const std::vector<DayTable::Line> lines = days_.lines(grain);
    for (const DayTable::Line &line : lines) {
        sheet.rows.push_back(rowOfAmounts(rowCaption(line.period, grain), line.amounts));
        sheet.chart.categories << barCaption(line.period, grain);
        sheet.chart.places.push_back(calendarPlace(line.period, grain));
        for (std::size_t medium = 0; medium < sheet.chart.series.size(); ++medium) {
            const Sum received = line.amounts[Cash + medium] + line.amounts[LateCash + medium];
            sheet.chart.series[medium].values.push_back(received.orZero());
        }
    }
    sheet.totals = rowOfAmounts(QStringLiteral("합계"), days_.totals());
    sheet.remark = QStringLiteral(
        "(미수)는 판매일이 지나 받았거나 미수로 받은 금액입니다. 환불은 음수입니다. 순수납 = 수납합계 + 환불");
    return sheet;
}

} // namespace statistics
