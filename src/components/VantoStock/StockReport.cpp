#include "components/VantoStock/StockReport.h"

#include "platform/runtime/Conversions.h"

#include <algorithm>

namespace statistics {

namespace {

constexpr std::size_t mostBarsShown = 10;
enum View { HandledView, AllView, WorryView };

struct StockColumn
{
    const char16_t *caption; ///< may hold the days of the rate
    Column::Kind kind;
    int width;
    bool adds; ///< whether the column has a total
};

using enum Column::Kind;
constexpr StockColumn stockColumns[] = {
    {u"분류", Text, 76, false},     {u"물품명", Text, 176, false},    {u"상태", Text, 92, false},
    {u"입고", Number, 52, true},    {u"판매", Number, 52, true},      {u"서비스", Number, 50, true},
    {u"망실", Number, 44, true},    {u"재고", Number, 52, true},      {u"최근 구매단가", Money, 84, false},
    {u"재고금액", Money, 88, true}, {u"%1일 출고", Number, 66, true}, {u"남은일수", Number, 64, false},
};

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
    return keyBounds("PM_PK", "tPSProductMaster");
}

QString stock::purchases()
{
    // The day by another name: only compared, it need not be a date.
    return QStringLiteral("SELECT PM_PK, IN_Date AS BoughtOn, IN_UnitPrice, IN_Count + 0 AS Incoming FROM tPSIncoming "
                          "WHERE PM_PK BETWEEN [FROM] AND [TO] ORDER BY PM_PK, IN_Date, IN_UnitPrice");
}

QString stock::purchaseBounds()
{
    return keyBounds("PM_PK", "tPSIncoming");
}

QString stock::outgoing()
{
    // As the index has them, so that the engine only adds up.
    return QStringLiteral("SELECT PM_PK, OrdD_OrderType, SUM(OrdD_Count) AS Outgoing FROM tPSOrderDetail "
                          "WHERE PM_PK BETWEEN [FROM] AND [TO] GROUP BY PM_PK, OrdD_OrderType");
}

QString stock::outgoingBounds()
{
    return keyBounds("PM_PK", "tPSOrderDetail");
}

QString stock::recent(Summed summed)
{
    const QString product = QStringLiteral("tPSOrderDetail.PM_PK");
    if (summed == Summed::No)
        return QStringLiteral("SELECT %1, OrdD_Count + 0 AS Recent FROM ").arg(product) + linesOfOrders();
    return QStringLiteral("SELECT %1, SUM(OrdD_Count) AS Recent FROM %2GROUP BY %1").arg(product, linesOfOrders());
}

Sum StockReport::Product::remaining() const
{
    return sums[Incoming] - sums[Sold] - sums[Service] - sums[Lost];
}

Cell StockReport::Product::daysLeft(int rateDays) const
{
    const Sum left = remaining();
    if (!left.isKnown() || !sums[Recent].isKnown())
        return Sum::unknown();
    const std::int64_t pieces = left.orZero().scaled();
    const std::int64_t gone = sums[Recent].orZero().scaled();
    if (pieces <= 0 || gone <= 0)
        return {};
    // Whole days, exactly: first for the whole times that the rate goes into what is left, then for the rest.
    const Sum rest = Sum(runtime::Currency::fromScaled(pieces % gone)) * rateDays;
    if (!rest.isKnown())
        return rest;
    const Sum day = runtime::Currency::fromWon(1);
    return day * (pieces / gone) * rateDays + day * (rest.orZero().scaled() / gone);
}

QString StockReport::Product::state(int rateDays) const
{
    const Sum left = remaining();
    if (!worth().isKnown())
        return QStringLiteral("확인 필요");
    if (left < Sum())
        return QStringLiteral("마이너스 재고");
    if (left == Sum())
        return QStringLiteral("재고 없음");
    const Cell days = daysLeft(rateDays);
    return isNumber(days) && days < Cell(runtime::Currency::fromWon(enoughDays)) ? QStringLiteral("곧 소진")
                                                                                 : QString();
}

Sum StockReport::Product::worth() const
{
    const Sum left = remaining();
    return left.isKnown() ? sums[LastPrice] * left.notBelowZero().orZero().toWon() : left;
}

QStringList StockReport::views() const
{
    return {QStringLiteral("취급 물품"), QStringLiteral("모든 물품"), QStringLiteral("확인할 물품")};
}

Figure StockReport::figureOf(const QString &statement, const QString &bounds,
                             std::function<void(Product &product, const Record &row)> take)
{
    Figure figure{statement, Figure::Slices::Keys, bounds};
    figure.isKept = true;
    figure.take = [this, take = std::move(take)](const Record &row) {
        if (Product *const product = products_.find(row.key(0)))
            take(*product, row);
    };
    return figure;
}

/// They come by day and price: the last price is that of the last row, but for one that is missing there.
void StockReport::takePurchase(Product &product, const Record &row)
{
    product.sums[Incoming] += row.amount(3);
    if (row.isNull(1))
        return;
    QString day = row.text(1);
    if (product.lastDay != day || !row.isNull(2))
        product.sums[LastPrice] = row.amount(2);
    product.lastDay = std::move(day);
}

void StockReport::takeOutgoing(Product &product, const Record &row)
{
    constexpr std::pair<int, Amount> kinds[] = {{0, Sold}, {1, Service}, {2, Lost}};
    const Sum kind = row.amount(1);
    for (const auto &[code, amount] : kinds) {
        if (kind == Sum(runtime::Currency::fromWon(code)))
            product.sums[amount] += row.amount(2);
    }
}

std::vector<Figure> StockReport::figures(const Period &period)
{
    products_.clear();
    rateDays_ = period.days();
    Figure products{stock::products(), Figure::Slices::Keys, stock::productBounds()};
    products.isKept = true;
    products.take = [this](const Record &row) {
        products_[row.key(0)] = {.category = row.text(1), .name = row.text(2), .isHandled = row.flag(3)};
    };
    Figure recent = figureOf(stock::recent(Summed::Yes), orderBounds(),
                             [](Product &product, const Record &row) { product.sums[Recent] += row.amount(1); });
    recent.unsummed = stock::recent(Summed::No);
    return {products, figureOf(stock::purchases(), stock::purchaseBounds(), takePurchase),
            figureOf(stock::outgoing(), stock::outgoingBounds(), takeOutgoing), recent};
}

std::vector<const StockReport::Product *> StockReport::shown(int view) const
{
    std::vector<const Product *> shown;
    for (const auto *one : products_.inOrder()) {
        const Product &product = one->second;
        if (view == AllView || (product.isHandled && (view == HandledView || !product.state(rateDays_).isEmpty())))
            shown.push_back(&product);
    }
    std::stable_sort(shown.begin(), shown.end(), [](const Product *a, const Product *b) {
        const int order = a->category.compare(b->category);
        return order != 0 ? order < 0 : a->name < b->name;
    });
    return shown;
}

Row StockReport::rowOf(const Product &product) const
{
    return {product.category,        product.name,          product.state(rateDays_), product.sums[Incoming],
            product.sums[Sold],      product.sums[Service], product.sums[Lost],       product.remaining(),
            product.sums[LastPrice], product.worth(),       product.sums[Recent],     product.daysLeft(rateDays_)};
}

Sheet StockReport::makeSheet(int view) const
{
    constexpr std::size_t worthColumn = 9;
    Sheet sheet;
    std::vector<Sum> totals(std::size(stockColumns));
    const QString days = QString::number(rateDays_);
    for (const StockColumn &column : stockColumns) {
        const QString caption = QString::fromUtf16(column.caption).replace(QStringLiteral("%1"), days);
        sheet.columns.push_back({caption, column.kind, column.width});
    }
    const std::vector<const Product *> products = shown(view);
    for (const Product *product : products) {
        Row row = rowOf(*product);
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (stockColumns[column].adds)
                totals[column] += Sum::of(row[column]);
        }
        sheet.rows.push_back(std::move(row));
    }
    for (std::size_t column = 0; column < totals.size(); ++column)
        sheet.totals.push_back(stockColumns[column].adds ? Cell(totals[column]) : Cell());
    sheet.totals[0] = QStringLiteral("합계");

    sheet.chart.title = QStringLiteral("재고금액 상위 %1").arg(std::min(mostBarsShown, products.size()));
    sheet.chart.lying = true;
    sheet.chart.series = {{QStringLiteral("재고금액"), {}}};
    const auto dearest = dearestOf(sheet.rows, worthColumn);
    for (const Row *row : dearest) {
        sheet.chart.categories << plainText((*row)[1]);
        sheet.chart.series[0].values.push_back(Sum::of((*row)[worthColumn]).orZero());
    }
    sheet.remark =
        QStringLiteral("재고는 현재 수량입니다. 남은일수는 출고 기간 %1일의 출고량으로 계산합니다.").arg(rateDays_);
    return sheet;
}

} // namespace statistics
