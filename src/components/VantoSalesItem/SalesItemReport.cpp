#include "components/VantoSalesItem/SalesItemReport.h"

#include <algorithm>

namespace statistics {

namespace {

constexpr std::size_t mostBarsShown = 10;

struct ItemColumn
{
    const char16_t *caption;
    int width;
    Column::Kind kind = Column::Kind::Number;
};

/// In the order of SalesItemReport::Amount and of the statement, behind the product.
constexpr ItemColumn itemColumns[] = {
    {u"판매수량", 90}, {u"서비스", 80}, {u"망실", 80}, {u"반품", 80}, {u"순매출", 120, Column::Kind::Money}};
static_assert(std::size(itemColumns) == SalesItemReport::Amounts);

} // namespace

QString salesItem::products()
{
    return QStringLiteral(
        "SELECT PM_PK, PM_Catagory, PM_Name FROM tPSProductMaster WHERE PM_PK BETWEEN [FROM] AND [TO]");
}

QString salesItem::productBounds()
{
    return QStringLiteral("SELECT MIN(PM_PK) AS Lowest, MAX(PM_PK) AS Highest FROM tPSProductMaster");
}

QString salesItem::linesByProduct()
{
    return QStringLiteral(
               "SELECT tPSOrderDetail.PM_PK, "
               "SUM(CASE WHEN COALESCE(OrdD_OrderType, 0) = 0 AND OrdD_Count > 0 THEN OrdD_Count ELSE 0 END) AS Sold, "
               "SUM(CASE WHEN OrdD_OrderType = 1 THEN OrdD_Count ELSE 0 END) AS Service, "
               "SUM(CASE WHEN OrdD_OrderType = 2 THEN OrdD_Count ELSE 0 END) AS Lost, "
               "SUM(CASE WHEN COALESCE(OrdD_OrderType, 0) = 0 AND OrdD_Count < 0 THEN OrdD_Count ELSE 0 END) AS "
               "Returned, "
               "SUM((OrdD_UnitPrice - COALESCE(OrdD_HalinUnit, 0)) * OrdD_Count) AS Net FROM ")
           + linesOfOrders() + QStringLiteral("GROUP BY tPSOrderDetail.PM_PK");
}

std::vector<Figure> SalesItemReport::figures(const Period &)
{
    products_.clear();
    sums_.clear();
    Figure products{salesItem::products(), Figure::Slices::Keys, salesItem::productBounds()};
    products.take = [this](const Record &row) {
        products_.insert_or_assign(products_.end(), row.key(0), Product{row.text(1), row.text(2)}); // they come by key
    };
    Figure lines{salesItem::linesByProduct(), Figure::Slices::Keys, orderBounds()};
    lines.take = [this](const Record &row) {
        Sums &sums = sums_[row.key(0)];
        for (std::size_t amount = 0; amount < Amounts; ++amount)
            sums[amount] += row.amount(int(amount) + 1);
    };
    return {products, lines};
}

std::vector<SalesItemReport::Line> SalesItemReport::linesByProduct() const
{
    std::vector<Line> lines;
    for (const auto &[key, sums] : sums_) {
        const auto product = products_.find(key);
        lines.push_back({product != products_.end() ? product->second
                                                    : Product{QString(), QStringLiteral("(삭제된 물품 %1)").arg(key)},
                         sums});
    }
    return lines;
}

std::vector<SalesItemReport::Line> SalesItemReport::linesByCategory() const
{
    std::map<QString, Sums> groups;
    for (const Line &line : linesByProduct()) {
        Sums &sums = groups[line.product.category];
        for (std::size_t amount = 0; amount < Amounts; ++amount)
            sums[amount] += line.sums[amount];
    }
    std::vector<Line> lines;
    for (const auto &[category, sums] : groups)
        lines.push_back({{category.isEmpty() ? QStringLiteral("(분류 없음)") : category, {}}, sums});
    return lines;
}

Sheet SalesItemReport::makeSheet(int view) const
{
    const bool byCategory = view == 1;
    std::vector<Line> lines = byCategory ? linesByCategory() : linesByProduct();
    std::stable_sort(lines.begin(), lines.end(),
                     [](const Line &a, const Line &b) { return a.sums[Net] > b.sums[Net]; });

    Sheet sheet;
    sheet.columns = {{QStringLiteral("분류"), Column::Kind::Text, 120}};
    if (!byCategory)
        sheet.columns.push_back({QStringLiteral("물품명"), Column::Kind::Text, 240});
    for (const ItemColumn &column : itemColumns)
        sheet.columns.push_back({QString::fromUtf16(column.caption), column.kind, column.width});
    sheet.chart.title = QStringLiteral("순매출 상위 %1").arg(std::min(mostBarsShown, lines.size()));
    sheet.chart.lying = true;
    sheet.chart.series = {{QStringLiteral("순매출"), {}}};

    Sums totals{};
    for (const Line &line : lines) {
        Row row{line.product.category};
        if (!byCategory)
            row.emplace_back(line.product.name);
        row.insert(row.end(), line.sums.begin(), line.sums.end());
        sheet.rows.push_back(std::move(row));
        for (std::size_t amount = 0; amount < Amounts; ++amount)
            totals[amount] += line.sums[amount];
        if (std::size_t(sheet.chart.categories.size()) < mostBarsShown && line.sums[Net] > Sum()) {
            sheet.chart.categories << (byCategory ? line.product.category : line.product.name);
            sheet.chart.series[0].values.push_back(line.sums[Net].orZero());
        }
    }
    sheet.totals = {QStringLiteral("합계")};
    if (!byCategory)
        sheet.totals.emplace_back();
    sheet.totals.insert(sheet.totals.end(), totals.begin(), totals.end());
    sheet.remark = QStringLiteral("순매출은 할인과 반품을 뺀 금액입니다.");
    return sheet;
}

} // namespace statistics
