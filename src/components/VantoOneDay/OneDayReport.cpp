#include "components/VantoOneDay/OneDayReport.h"

#include "components/frame/Ledger.h"

namespace statistics {

namespace {

Sum sumOf(const std::array<Sum, OneDayReport::Amounts> &sums, std::size_t first, std::size_t last)
{
    Sum sum;
    for (std::size_t amount = first; amount <= last; ++amount)
        sum += sums[amount];
    return sum;
}

Row tableRow(const QString &chart, const QString &name, const QString &kind,
             const std::array<Sum, OneDayReport::Amounts> &sums)
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

Chart moneyChart(const std::array<Sum, OneDayReport::Amounts> &totals)
{
    Chart chart;
    chart.title = QStringLiteral("수납과 환불");
    chart.categories = QStringList{QStringLiteral("현금"), QStringLiteral("카드"), QStringLiteral("통장")};
    chart.series = {{QStringLiteral("수납"), {}}, {QStringLiteral("환불"), {}}};
    for (std::size_t medium = 0; medium < 3; ++medium) {
        chart.series[0].values.push_back(totals[OneDayReport::PaidCash + medium].orZero());
        chart.series[1].values.push_back(totals[OneDayReport::RefundCash + medium].orZero());
    }
    return chart;
}

} // namespace

QString oneDay::orders()
{
    return QStringLiteral(
        "SELECT tPSOrderMaster.OrdM_PK, tPSOrderMaster.Cust_PK, Customer.name, Customer.sn, OrdM_Total "
        "FROM tPSOrderMaster LEFT JOIN Customer ON tPSOrderMaster.Cust_PK = Customer.Customer_PK "
        "WHERE OrdM_Date = '[FROM]'");
}

QString oneDay::linesByOrder()
{
    return QStringLiteral(
        "SELECT tPSOrderMaster.OrdM_PK, tPSOrderMaster.Cust_PK, "
        "SUM(CASE WHEN OrdD_Count > 0 THEN OrdD_UnitPrice * OrdD_Count ELSE 0 END) AS Gross, "
        "SUM(CASE WHEN OrdD_Count > 0 THEN COALESCE(OrdD_HalinUnit, 0) * OrdD_Count ELSE 0 END) AS Discount, "
        "SUM(CASE WHEN OrdD_Count < 0 THEN (OrdD_UnitPrice - COALESCE(OrdD_HalinUnit, 0)) * OrdD_Count ELSE 0 END) "
        "AS Returned, "
        "SUM((OrdD_UnitPrice - COALESCE(OrdD_HalinUnit, 0)) * OrdD_Count) AS Net "
        "FROM tPSOrderMaster INNER JOIN tPSOrderDetail ON tPSOrderMaster.OrdM_PK = tPSOrderDetail.OrdM_PK "
        "WHERE OrdM_Date = '[FROM]' GROUP BY tPSOrderMaster.OrdM_PK, tPSOrderMaster.Cust_PK");
}

QString oneDay::ledgerByOrder(Summed summed)
{
    return QStringLiteral(
               "SELECT tpstrans_OrderM_PK, tpstrans_Customer_PK, Customer.name, Customer.sn, tpstrans_Operator, "
               "tpstrans_Method, %2 AS IsAfter, %3 AS Amount "
               "FROM %1LEFT JOIN Customer ON tpstrans_Customer_PK = Customer.Customer_PK "
               "WHERE tpstrans_Date = '[FROM]'%4")
        .arg(ledgerWithOrders(), afterItsDay(),
             summed == Summed::Yes ? QStringLiteral("SUM(tpstrans_Money)") : QStringLiteral("tpstrans_Money"),
             summed == Summed::Yes
                 ? QStringLiteral(" GROUP BY tpstrans_OrderM_PK, tpstrans_Customer_PK, Customer.name, "
                                  "Customer.sn, tpstrans_Operator, tpstrans_Method, %1")
                       .arg(afterItsDay())
                 : QString());
}

QString oneDay::settledByOrder(Summed summed)
{
    // The day in the sum: as a condition it would lure the engine to look through each customer's whole past by its dates.
    return QStringLiteral("SELECT tPSOrderMaster.OrdM_PK, tPSOrderMaster.Cust_PK, tpstrans_Operator, tpstrans_Method, "
                          "%1(CASE WHEN tpstrans_Date <= '[FROM]' THEN tpstrans_Money ELSE 0 END) AS Amount "
                          "FROM tPSOrderMaster INNER JOIN tPSTransaction "
                          "ON tPSOrderMaster.OrdM_PK = tPSTransaction.tpstrans_OrderM_PK "
                          "AND tPSOrderMaster.Cust_PK = tPSTransaction.tpstrans_Customer_PK "
                          "WHERE OrdM_Date = '[FROM]'%2")
        .arg(summed == Summed::Yes ? QStringLiteral("SUM") : QString(),
             summed == Summed::Yes ? QStringLiteral(" GROUP BY tPSOrderMaster.OrdM_PK, tPSOrderMaster.Cust_PK, "
                                                    "tpstrans_Operator, tpstrans_Method")
                                   : QString());
}

void OneDayReport::takeOrder(const Record &row)
{
    Line &line = lines_[{false, row.key(0), row.key(1)}];
    line.name = texts_.keep(line.name, row, 2);
    line.chart = texts_.keep(line.chart, row, 3);
    line.sums[Owed] += row.amount(4);
    line.unpaidAtSale += row.amount(4);
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
    Line *const ofTheDay = lines_.find({false, order, customer});
    Line &line = ofTheDay ? *ofTheDay : lines_[{true, order, customer}];
    line.name = texts_.keep(line.name, row, 2);
    line.chart = texts_.keep(line.chart, row, 3);
    QByteArray room;
    const QUtf8StringView method = row.utf8(5, room);
    const auto medium = std::size_t(mediumOf(method));
    const Sum amount = row.amount(7);
    switch (row.key(4)) {
    case Operator::Payment:
        line.sums[PaidCash + medium] += amount;
        if (isReceivedLater(method, row.flag(6)))
            line.sums[Late] += amount;
        break;
    case Operator::Refund:
        line.sums[RefundCash + medium] -= amount;
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

void OneDayReport::takeSettled(const Record &row)
{
    Line *const line = lines_.find({false, row.key(0), row.key(1)});
    if (!line)
        return; // of an order that came between two statements
    const int operation = row.key(2);
    if (operation < Operator::Cut || operation > Operator::Refund)
        return; // no kind of operation that moves money
    const Sum settled = operation == Operator::Refund ? -row.amount(4) : row.amount(4);
    line->sums[Owed] -= settled;
    QByteArray room;
    if (operation != Operator::Payment || !isAgainstOutstanding(row.utf8(3, room)))
        line->unpaidAtSale -= settled;
}

std::vector<Figure> OneDayReport::figures(const Period &)
{
    lines_.clear();
    texts_ = {};
    discounts_ = cuts_ = {};
    Figure orders{oneDay::orders()};
    orders.take = [this](const Record &row) { takeOrder(row); };
    Figure lines{oneDay::linesByOrder()};
    lines.take = [this](const Record &row) { takeLines(row); };
    Figure ledger{oneDay::ledgerByOrder()}; // behind the orders, among which it looks for its own
    ledger.unsummed = oneDay::ledgerByOrder(Summed::No);
    ledger.take = [this](const Record &row) { takeLedger(row); };
    Figure settled{oneDay::settledByOrder()};
    settled.unsummed = oneDay::settledByOrder(Summed::No);
    settled.take = [this](const Record &row) { takeSettled(row); };
    return {orders, lines, ledger, settled};
}

std::vector<SummaryLine> OneDayReport::summary(const Sums &totals) const
{
    std::int64_t orders = 0;
    Sum outstandingMade;
    for (const auto *one : lines_.inOrder()) {
        const auto &[key, line] = *one;
        orders += std::get<0>(key) ? 0 : 1;
        outstandingMade += line.unpaidAtSale.notBelowZero();
    }
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
        {money, QStringLiteral("환불"), refunded},
        {money, QStringLiteral("순수납"), paid + refunded, true},
        {owed, QStringLiteral("미수 발생"), outstandingMade},
        {owed, QStringLiteral("미수 수납"), totals[Late]},
        {owed, QStringLiteral("수납 시 할인"), discounts_},
        {owed, QStringLiteral("절사"), cuts_},
        {drawer, QStringLiteral("현금 수납"), totals[PaidCash]},
        {drawer, QStringLiteral("현금 환불"), totals[RefundCash]},
        {drawer, QStringLiteral("현금 증감"), totals[PaidCash] + totals[RefundCash], true},
    };
}

Sheet OneDayReport::makeSheet(int) const
{
    using Kind = Column::Kind;
    Sheet sheet;
    sheet.columns = {{QStringLiteral("챠트번호"), Kind::Text, 66}, {QStringLiteral("이름"), Kind::Text, 66},
                     {QStringLiteral("거래일"), Kind::Text, 48},   {QStringLiteral("판매금액"), Kind::Money, 76},
                     {QStringLiteral("할인"), Kind::Money, 62},    {QStringLiteral("반품"), Kind::Money, 70},
                     {QStringLiteral("순매출"), Kind::Money, 76},  {QStringLiteral("할인·절사"), Kind::Money, 66},
                     {QStringLiteral("현금"), Kind::Money, 72},    {QStringLiteral("카드"), Kind::Money, 72},
                     {QStringLiteral("통장"), Kind::Money, 66},    {QStringLiteral("환불"), Kind::Money, 70},
                     {QStringLiteral("미수금"), Kind::Money, 70}};
    Sums totals{};
    for (const auto *one : lines_.inOrder()) {
        const auto &[key, line] = *one;
        const QString kind = std::get<0>(key) ? QStringLiteral("이전") : QStringLiteral("당일");
        Sums sums = line.sums;
        sums[Owed] = sums[Owed].notBelowZero();
        sheet.rows.push_back(tableRow(QString::fromUtf8(line.chart), QString::fromUtf8(line.name), kind, sums));
        for (std::size_t amount = 0; amount < Amounts; ++amount)
            totals[amount] += sums[amount];
    }
    sheet.totals = tableRow(QStringLiteral("합계"), {}, {}, totals);
    sheet.summary = summary(totals);
    sheet.chart = moneyChart(totals);
    sheet.isDense = true;
    sheet.cashChange = totals[PaidCash] + totals[RefundCash];
    sheet.remark =
        QStringLiteral("수납과 환불은 이날의 금액이고 환불은 음수입니다. 미수금은 이날까지 받지 않은 금액입니다.");
    return sheet;
}

} // namespace statistics
