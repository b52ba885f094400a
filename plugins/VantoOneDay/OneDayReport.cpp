#include "plugins/VantoOneDay/OneDayReport.h"

#include "plugins/frame/Ledger.h"

namespace statistics {

namespace {

runtime::Currency sumOf(const std::array<runtime::Currency, OneDayReport::Amounts> &sums, std::size_t first, std::size_t last)
{
    runtime::Currency sum;
    for (std::size_t amount = first; amount <= last; ++amount)
        sum += sums[amount];
    return sum;
}

Row tableRow(const QString &chart, const QString &name, const QString &kind,
             const std::array<runtime::Currency, OneDayReport::Amounts> &sums)
{
    using Report = OneDayReport;
    return {chart,
            name,
            kind,
            sums[Report::Gross],
            sums[Report::Discount],
            sums[Report::Returned],
            sums[Report::Net],
            sums[Report::Forgone],
            sums[Report::PaidCash],
            sums[Report::PaidCard],
            sums[Report::PaidBank],
            sumOf(sums, Report::RefundCash, Report::RefundBank),
            sums[Report::Owed]};
}

Chart moneyChart(const std::array<runtime::Currency, OneDayReport::Amounts> &totals)
{
    Chart chart;
    chart.title = QStringLiteral("받은 돈과 돌려준 돈");
    chart.categories = QStringList{QStringLiteral("현금"), QStringLiteral("카드"), QStringLiteral("통장")};
    chart.series = {{QStringLiteral("수납"), {}}, {QStringLiteral("환불"), {}}};
    for (std::size_t medium = 0; medium < 3; ++medium) {
        chart.series[0].values.push_back(totals[OneDayReport::PaidCash + medium]);
        chart.series[1].values.push_back(-totals[OneDayReport::RefundCash + medium]);
    }
    return chart;
}

} // namespace

QString oneDay::orders()
{
    return QStringLiteral("SELECT tPSOrderMaster.OrdM_PK, tPSOrderMaster.Cust_PK, Customer.name, Customer.sn, OrdM_Misugum "
                          "FROM tPSOrderMaster LEFT JOIN Customer ON tPSOrderMaster.Cust_PK = Customer.Customer_PK "
                          "WHERE OrdM_Date = '[FROM]'");
}

QString oneDay::linesByOrder()
{
    return QStringLiteral(
        "SELECT tPSOrderMaster.OrdM_PK, tPSOrderMaster.Cust_PK, "
        "SUM(CASE WHEN OrdD_Count > 0 THEN OrdD_UnitPrice * OrdD_Count ELSE 0 END) AS Gross, "
        "SUM(CASE WHEN OrdD_Count > 0 THEN OrdD_HalinUnit * OrdD_Count ELSE 0 END) AS Discount, "
        "SUM(CASE WHEN OrdD_Count < 0 THEN (OrdD_UnitPrice - OrdD_HalinUnit) * OrdD_Count ELSE 0 END) AS Returned, "
        "SUM((OrdD_UnitPrice - OrdD_HalinUnit) * OrdD_Count) AS Net "
        "FROM tPSOrderMaster INNER JOIN tPSOrderDetail ON tPSOrderMaster.OrdM_PK = tPSOrderDetail.OrdM_PK "
        "WHERE OrdM_Date = '[FROM]' GROUP BY tPSOrderMaster.OrdM_PK, tPSOrderMaster.Cust_PK");
}

QString oneDay::ledgerByOrder()
{
    return QStringLiteral("SELECT tpstrans_OrderM_PK, tpstrans_Customer_PK, Customer.name, Customer.sn, "
                          "tpstrans_Operator, tpstrans_Method, SUM(tpstrans_Money) AS Amount "
                          "FROM tPSTransaction LEFT JOIN Customer ON tpstrans_Customer_PK = Customer.Customer_PK "
                          "WHERE tpstrans_Date = '[FROM]' GROUP BY tpstrans_OrderM_PK, tpstrans_Customer_PK, Customer.name, "
                          "Customer.sn, tpstrans_Operator, tpstrans_Method");
}

QString oneDay::outstandingMade()
{
    return QStringLiteral("SELECT SUM(Part) AS Made FROM ("
                          "SELECT OrdM_Misugum AS Part FROM tPSOrderMaster WHERE OrdM_Date = '[FROM]' "
                          "UNION ALL SELECT tpstrans_Money AS Part FROM tPSOrderMaster INNER JOIN tPSTransaction "
                          "ON tPSOrderMaster.OrdM_PK = tPSTransaction.tpstrans_OrderM_PK "
                          "AND tPSOrderMaster.Cust_PK = tPSTransaction.tpstrans_Customer_PK "
                          "WHERE OrdM_Date = '[FROM]' AND tpstrans_Operator = 3 AND tpstrans_Method LIKE '1%') AS Parts");
}

void OneDayReport::takeOrder(const Record &row)
{
    Line &line = lines_[{false, row.key(0), row.key(1)}];
    line.name = row.text(2);
    line.chart = row.text(3);
    line.sums[Owed] += row.amount(4);
}

void OneDayReport::takeLines(const Record &row)
{
    Sums &sums = lines_[{false, row.key(0), row.key(1)}].sums;
    sums[Gross] += row.amount(2);
    sums[Discount] += row.amount(3);
    sums[Returned] += row.amount(4);
    sums[Net] += row.amount(5);
}

void OneDayReport::takeLedger(const Record &row)
{
    const int order = row.key(0);
    const int customer = row.key(1);
    const bool ofTheDay = lines_.contains({false, order, customer});
    Line &line = lines_[{!ofTheDay, order, customer}];
    line.name = row.text(2);
    line.chart = row.text(3);
    const QString method = row.text(5);
    const auto medium = std::size_t(mediumOf(method));
    const runtime::Currency amount = row.amount(6);
    switch (row.key(4)) {
    case Operator::Payment:
        line.sums[PaidCash + medium] += amount;
        if (isAgainstOutstanding(method))
            line.sums[Late] += amount;
        break;
    case Operator::Refund:
        line.sums[RefundCash + medium] += amount;
        break;
    case Operator::Discount:
        line.sums[Forgone] += amount;
        discounts_ += amount;
        break;
    case Operator::Cut:
        line.sums[Forgone] += amount;
        cuts_ += amount;
        break;
    default: // no kind of operation that moves money
        break;
    }
}

std::vector<Figure> OneDayReport::figures(const Period &)
{
    lines_.clear();
    outstandingMade_ = discounts_ = cuts_ = {};
    Figure orders{oneDay::orders()};
    orders.take = [this](const Record &row) { takeOrder(row); };
    Figure lines{oneDay::linesByOrder()};
    lines.take = [this](const Record &row) { takeLines(row); };
    Figure ledger{oneDay::ledgerByOrder()}; // behind the orders, among which it looks for its own
    ledger.take = [this](const Record &row) { takeLedger(row); };
    Figure made{oneDay::outstandingMade()};
    made.take = [this](const Record &row) { outstandingMade_ += row.amount(0); };
    return {orders, lines, ledger, made};
}

std::vector<SummaryLine> OneDayReport::summary(const Sums &totals) const
{
    std::int64_t orders = 0;
    for (const auto &[key, line] : lines_)
        orders += std::get<0>(key) ? 0 : 1;
    const auto paid = sumOf(totals, PaidCash, PaidBank);
    const auto refunded = sumOf(totals, RefundCash, RefundBank);
    const QString sales = QStringLiteral("매출");
    const QString money = QStringLiteral("수납");
    const QString owed = QStringLiteral("미수·감면");
    const QString drawer = QStringLiteral("현금 시재");
    return {
        {sales, QStringLiteral("거래"), runtime::Currency::fromWon(orders), false, QStringLiteral("건")},
        {sales, QStringLiteral("판매금액"), totals[Gross]},
        {sales, QStringLiteral("할인"), totals[Discount]},
        {sales, QStringLiteral("반품"), totals[Returned]},
        {sales, QStringLiteral("순매출"), totals[Net], true},
        {money, QStringLiteral("현금"), totals[PaidCash]},
        {money, QStringLiteral("카드"), totals[PaidCard]},
        {money, QStringLiteral("통장"), totals[PaidBank]},
        {money, QStringLiteral("환불"), -refunded},
        {money, QStringLiteral("순수납"), paid - refunded, true},
        {owed, QStringLiteral("미수 발생"), outstandingMade_},
        {owed, QStringLiteral("미수 수납"), totals[Late]},
        {owed, QStringLiteral("수납 시 할인"), discounts_},
        {owed, QStringLiteral("절사"), cuts_},
        {drawer, QStringLiteral("현금 수납"), totals[PaidCash]},
        {drawer, QStringLiteral("현금 환불"), -totals[RefundCash]},
        {drawer, QStringLiteral("서랍에 늘어야 할 현금"), totals[PaidCash] - totals[RefundCash], true},
    };
}

Sheet OneDayReport::sheet(int) const
{
    using Kind = Column::Kind;
    Sheet sheet;
    sheet.columns = {{QStringLiteral("챠트번호"), Kind::Text, 66}, {QStringLiteral("이름"), Kind::Text, 66},
                     {QStringLiteral("거래일"), Kind::Text, 48},   {QStringLiteral("판매금액"), Kind::Number, 76},
                     {QStringLiteral("할인"), Kind::Number, 62},   {QStringLiteral("반품"), Kind::Number, 70},
                     {QStringLiteral("순매출"), Kind::Number, 76}, {QStringLiteral("할인·절사"), Kind::Number, 66},
                     {QStringLiteral("현금"), Kind::Number, 72},   {QStringLiteral("카드"), Kind::Number, 72},
                     {QStringLiteral("통장"), Kind::Number, 66},   {QStringLiteral("환불"), Kind::Number, 70},
                     {QStringLiteral("미수금"), Kind::Number, 70}};
    Sums totals{};
    for (const auto &[key, line] : lines_) {
        const QString kind = std::get<0>(key) ? QStringLiteral("이전") : QStringLiteral("당일");
        sheet.rows.push_back(tableRow(line.chart, line.name, kind, line.sums));
        for (std::size_t amount = 0; amount < Amounts; ++amount)
            totals[amount] += line.sums[amount];
    }
    sheet.totals = tableRow(QStringLiteral("합계"), {}, {}, totals);
    sheet.summary = summary(totals);
    sheet.chart = moneyChart(totals);
    sheet.remark = QStringLiteral("돈은 이날 받거나 돌려준 것이고, 미수금은 이날 거래에 지금 남은 것입니다.");
    return sheet;
}

} // namespace statistics
