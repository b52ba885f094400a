#include "components/VantoSalesPeriod/SalesPeriodReport.h"

namespace statistics {

namespace {

struct AmountColumn
{
    SalesPeriodReport::Amount amount;
    const char16_t *caption;
    int width;
};

/// In the order of Amount, behind the number of orders.
constexpr AmountColumn lineColumns[] = {
    {SalesPeriodReport::Gross, u"판매금액", 88},   {SalesPeriodReport::Discount, u"할인", 76},
    {SalesPeriodReport::Returns, u"반품건수", 66}, {SalesPeriodReport::Returned, u"반품금액", 84},
    {SalesPeriodReport::Net, u"순매출", 92},       {SalesPeriodReport::Taxed, u"과세", 88},
    {SalesPeriodReport::TaxFree, u"비과세", 84},   {SalesPeriodReport::UnknownTax, u"구분없음", 76},
};

} // namespace

QString salesPeriod::orders(const QString &keys, const QString &condition)
{
    return QStringLiteral("SELECT %1, COUNT(*) AS Orders FROM tPSOrderMaster "
                          "WHERE OrdM_Date BETWEEN '[FROM]' AND '[TO]' %2GROUP BY %1")
        .arg(keys, condition);
}

QString salesPeriod::lines(const QString &keys, const QString &condition)
{
    const QString way = QStringLiteral("CASE WHEN OrdD_Count > 0 THEN 1 WHEN OrdD_Count < 0 THEN -1 ELSE 0 END");
    return QStringLiteral("SELECT %1, PM_IsTaxed, %2 AS Way, COUNT(*) AS LineCount, "
                          "SUM(OrdD_UnitPrice * OrdD_Count) AS Gross, "
                          "SUM(COALESCE(OrdD_HalinUnit, 0) * OrdD_Count) AS Discount FROM %3%4"
                          "GROUP BY %1, PM_IsTaxed, %2")
        .arg(keys, way,
             linesOfOrders(
                 QStringLiteral("LEFT JOIN tPSProductMaster ON tPSOrderDetail.PM_PK = tPSProductMaster.PM_PK ")),
             condition);
}

/// What a row of salesPeriod::orders adds to the amounts, its keys ending before that column.
SalesPeriodReport::Sums SalesPeriodReport::ordersOf(const Record &row, int column)
{
    Sums sums{};
    sums[Orders] = row.amount(column);
    return sums;
}

/// The same of salesPeriod::lines.
SalesPeriodReport::Sums SalesPeriodReport::linesOf(const Record &row, int column)
{
    Sums sums{};
    const int way = row.key(column + 1);
    const Sum gross = row.amount(column + 3);
    const Sum discount = row.amount(column + 4);
    if (way > 0) {
        sums[Gross] = gross;
        sums[Discount] = discount;
    } else if (way < 0) {
        sums[Returns] = row.amount(column + 2);
        sums[Returned] = gross - discount;
    }
    sums[Net] = gross - discount;
    // The tax split follows the orders' own totals, in which returns are taken off.
    sums[row.isNull(column) ? UnknownTax : row.flag(column) ? Taxed : TaxFree] = gross - discount;
    return sums;
}

std::vector<Figure> SalesPeriodReport::figuresBy(By by, const Add &add) const
{
    const QString key =
        by == By::Day ? QStringLiteral("tPSOrderMaster.OrdM_Date") : QStringLiteral("tPSOrderMaster.Cust_PK");
    Figure orders{salesPeriod::orders(key), Figure::Slices::Days};
    orders.take = [add](const Record &row) { add(row, ordersOf(row, 1)); };
    Figure lines{salesPeriod::lines(key), Figure::Slices::Keys, orderBounds()};
    lines.take = [add](const Record &row) { add(row, linesOf(row, 1)); };
    return {orders, lines};
}

void SalesPeriodReport::tellOrders(Behind &behind, std::size_t amount, const CustomerScope &customers) const
{
    const QString keys = QStringLiteral("tPSOrderMaster.OrdM_PK, tPSOrderMaster.Cust_PK, tPSOrderMaster.OrdM_Date");
    const QString condition = customers.condition(QStringLiteral("tPSOrderMaster.Cust_PK"));
    behind.orders = amount == Orders ? Figure{salesPeriod::orders(keys, condition), Figure::Slices::Days}
                                     : Figure{salesPeriod::lines(keys, condition), Figure::Slices::Keys, orderBounds()};
    behind.amount = [amount, customers](const Record &row) {
        if (!customers.holds(row.key(1)))
            return Sum();
        return (amount == Orders ? ordersOf(row, 3) : linesOf(row, 3))[amount];
    };
}

std::vector<Column> SalesPeriodReport::amountColumns(const std::vector<Sum> &totals) const
{
    std::vector<Column> columns{{QStringLiteral("거래건수"), Column::Kind::Number, 60}};
    for (const AmountColumn &column : lineColumns) {
        if (column.amount != UnknownTax || totals[UnknownTax] != Sum())
            columns.push_back({QString::fromUtf16(column.caption),
                               column.amount == Returns ? Column::Kind::Number : Column::Kind::Money, column.width});
    }
    return columns;
}

QString SalesPeriodReport::remark() const
{
    return QStringLiteral("순매출 = 판매금액 − 할인 + 반품금액 = 과세 + 비과세");
}

Chart SalesPeriodReport::dayChart() const
{
    Chart chart;
    chart.title = QStringLiteral("순매출");
    chart.series = {{QStringLiteral("순매출"), {}}};
    return chart;
}

} // namespace statistics
