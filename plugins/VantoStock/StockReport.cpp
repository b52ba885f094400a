#include "plugins/VantoStock/StockReport.h"

#include "platform/runtime/Conversions.h"

#include <algorithm>
#include <tuple>

namespace statistics {

namespace {

constexpr std::size_t mostBarsShown = 10;
enum View { HandledView, AllView, WorryView };

/// The rows of the highest worth, the highest first; equal ones in their order.
std::vector<const Row *> dearestOf(const std::vector<Row> &rows, std::size_t worthColumn)
{
    std::vector<const Row *> dearest;
    for (const Row &row : rows)
        dearest.push_back(&row);
    const auto end = dearest.begin() + std::ptrdiff_t(std::min(mostBarsShown, dearest.size()));
    std::partial_sort(dearest.begin(), end, dearest.end(), [worthColumn](const Row *a, const Row *b) {
        return isBefore((*b)[worthColumn], (*a)[worthColumn])
            || (!isBefore((*a)[worthColumn], (*b)[worthColumn]) && a < b);
    });
    dearest.erase(end, dearest.end());
    return dearest;
}

} // namespace

QString stock::products()
{
    return QStringLiteral("SELECT PM_PK, PM_Catagory, PM_Name, PM_IsValid FROM tPSProductMaster "
                          "WHERE PM_PK BETWEEN [FROM] AND [TO]");
}

QString stock::productBounds()
{
    return QStringLiteral("SELECT MIN(PM_PK) AS Lowest, MAX(PM_PK) AS Highest FROM tPSProductMaster");
}

QString stock::incoming()
{
    return QStringLiteral("SELECT PM_PK, SUM(IN_Count) AS Incoming FROM tPSIncoming WHERE PM_PK BETWEEN [FROM] AND [TO] "
                          "GROUP BY PM_PK");
}

QString stock::incomingBounds()
{
    return QStringLiteral("SELECT MIN(PM_PK) AS Lowest, MAX(PM_PK) AS Highest FROM tPSIncoming");
}

QString stock::outgoing()
{
    return QStringLiteral("SELECT PM_PK, "
                          "SUM(CASE WHEN COALESCE(OrdD_OrderType, 0) = 0 THEN OrdD_Count ELSE 0 END) AS Sold, "
                          "SUM(CASE WHEN OrdD_OrderType = 1 THEN OrdD_Count ELSE 0 END) AS Service, "
                          "SUM(CASE WHEN OrdD_OrderType = 2 THEN OrdD_Count ELSE 0 END) AS Lost "
                          "FROM tPSOrderDetail WHERE PM_PK BETWEEN [FROM] AND [TO] GROUP BY PM_PK");
}

QString stock::outgoingBounds()
{
    return QStringLiteral("SELECT MIN(PM_PK) AS Lowest, MAX(PM_PK) AS Highest FROM tPSOrderDetail");
}

QString stock::lastPrice()
{
    return QStringLiteral("SELECT tPSIncoming.PM_PK, MAX(tPSIncoming.IN_UnitPrice) AS LastPrice FROM tPSIncoming "
                          "INNER JOIN (SELECT PM_PK AS Product, MAX(IN_Date) AS LastDate FROM tPSIncoming "
                          "WHERE PM_PK BETWEEN [FROM] AND [TO] GROUP BY PM_PK) AS Latest "
                          "ON tPSIncoming.PM_PK = Latest.Product AND tPSIncoming.IN_Date = Latest.LastDate "
                          "WHERE tPSIncoming.PM_PK BETWEEN [FROM] AND [TO] GROUP BY tPSIncoming.PM_PK");
}

QString stock::recent()
{
    return QStringLiteral("SELECT tPSOrderDetail.PM_PK, SUM(OrdD_Count) AS Recent FROM ") + linesOfOrders()
        + QStringLiteral("GROUP BY tPSOrderDetail.PM_PK");
}

runtime::Currency StockReport::Product::remaining() const
{
    return sums[Incoming] - sums[Sold] - sums[Service] - sums[Lost];
}

int StockReport::Product::daysLeft(int rateDays) const
{
    const std::int64_t left = remaining().scaled();
    const std::int64_t gone = sums[Recent].scaled();
    return left <= 0 || gone <= 0 ? -1 : runtime::toLong(left / gone * rateDays + left % gone * rateDays / gone);
}

QString StockReport::Product::state(int rateDays) const
{
    if (remaining() < runtime::Currency())
        return QStringLiteral("마이너스 재고");
    if (remaining().isZero())
        return QStringLiteral("재고 없음");
    const int days = daysLeft(rateDays);
    return days >= 0 && days < enoughDays ? QStringLiteral("곧 소진") : QString();
}

runtime::Currency StockReport::Product::worth() const
{
    const std::int64_t pieces = remaining().toWon();
    return pieces > 0 ? sums[LastPrice] * pieces : runtime::Currency();
}

QStringList StockReport::views() const
{
    return {QStringLiteral("취급 물품"), QStringLiteral("모든 물품"), QStringLiteral("확인할 물품")};
}

Figure StockReport::figureOf(std::vector<Amount> amounts, const QString &statement, Figure::Slices slices,
                             const QString &bounds)
{
    Figure figure{statement, slices, bounds};
    figure.take = [this, amounts = std::move(amounts)](const Record &row) {
        const auto product = products_.find(row.key(0));
        if (product == products_.end())
            return;
        int column = 0;
        for (const Amount amount : amounts)
            product->second.sums[amount] += row.amount(++column);
    };
    return figure;
}

std::vector<Figure> StockReport::figures(const Period &period)
{
    using Slices = Figure::Slices;
    products_.clear();
    rateDays_ = period.days();
    Figure products{stock::products(), Slices::Keys, stock::productBounds()};
    products.take = [this](const Record &row) {
        products_.insert_or_assign(products_.end(), row.key(0), Product{row.text(1), row.text(2), row.flag(3)}); // they come by key
    };
    return {products, figureOf({Incoming}, stock::incoming(), Slices::Keys, stock::incomingBounds()),
            figureOf({Sold, Service, Lost}, stock::outgoing(), Slices::Keys, stock::outgoingBounds()),
            figureOf({LastPrice}, stock::lastPrice(), Slices::Keys, stock::incomingBounds()),
            figureOf({Recent}, stock::recent(), Slices::Keys, orderBounds())};
}

std::vector<const StockReport::Product *> StockReport::shown(int view) const
{
    std::vector<const Product *> shown;
    for (const auto &[key, product] : products_) {
        const bool worry = product.isHandled && !product.state(rateDays_).isEmpty();
        if (view == AllView || (view == HandledView && product.isHandled) || (view == WorryView && worry))
            shown.push_back(&product);
    }
    std::stable_sort(shown.begin(), shown.end(), [](const Product *a, const Product *b) {
        return std::tie(a->category, a->name) < std::tie(b->category, b->name);
    });
    return shown;
}

Row StockReport::rowOf(const Product &product) const
{
    const int days = product.daysLeft(rateDays_);
    return {product.category,
            product.name,
            product.state(rateDays_),
            product.sums[Incoming],
            product.sums[Sold],
            product.sums[Service],
            product.sums[Lost],
            product.remaining(),
            product.sums[LastPrice],
            product.worth(),
            product.sums[Recent],
            days < 0 ? Cell() : Cell(runtime::Currency::fromWon(days))};
}

Sheet StockReport::sheet(int view) const
{
    using Kind = Column::Kind;
    constexpr std::size_t lastPriceColumn = 8;
    constexpr std::size_t worthColumn = 9;
    Sheet sheet;
    sheet.columns = {{QStringLiteral("분류"), Kind::Text, 76},       {QStringLiteral("물품명"), Kind::Text, 176},
                     {QStringLiteral("상태"), Kind::Text, 92},
                     {QStringLiteral("입고"), Kind::Number, 52},     {QStringLiteral("판매"), Kind::Number, 52},
                     {QStringLiteral("서비스"), Kind::Number, 50},   {QStringLiteral("망실"), Kind::Number, 44},
                     {QStringLiteral("재고"), Kind::Number, 52},     {QStringLiteral("최근 매입가"), Kind::Number, 76},
                     {QStringLiteral("재고 금액"), Kind::Number, 88}, {QStringLiteral("%1일 출고").arg(rateDays_), Kind::Number, 66},
                     {QStringLiteral("남은 일수"), Kind::Number, 64}};
    std::vector<const Product *> products = shown(view);
    sheet.totals = {QStringLiteral("합계"), Cell()};
    for (std::size_t column = 2; column < sheet.columns.size(); ++column) {
        const bool adds = column > 2 && column != lastPriceColumn && column < sheet.columns.size() - 1;
        sheet.totals.push_back(adds ? Cell(runtime::Currency()) : Cell());
    }
    for (const Product *product : products) {
        Row row = rowOf(*product);
        for (std::size_t column = 2; column < row.size(); ++column) {
            if (isNumber(sheet.totals[column]))
                std::get<runtime::Currency>(sheet.totals[column]) += std::get<runtime::Currency>(row[column]);
        }
        sheet.rows.push_back(std::move(row));
    }

    sheet.chart.title = QStringLiteral("재고 금액 상위 %1").arg(std::min(mostBarsShown, products.size()));
    sheet.chart.lying = true;
    sheet.chart.series = {{QStringLiteral("재고 금액"), {}}};
    const auto dearest = dearestOf(sheet.rows, worthColumn);
    for (const Row *row : dearest) {
        sheet.chart.categories << plainText((*row)[1]);
        sheet.chart.series[0].values.push_back(std::get<runtime::Currency>((*row)[worthColumn]));
    }
    sheet.remark = QStringLiteral("재고는 지금의 것입니다. 남은 일수는 %1일 동안 나간 속도로 셉니다.").arg(rateDays_);
    return sheet;
}

} // namespace statistics
