#include "components/VantoSalesItem/SalesItemReport.h"

#include "components/frame/DayTable.h"

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

/// What a line adds to each amount.
constexpr QLatin1String ofLine[] = {
    QLatin1String("CASE WHEN COALESCE(OrdD_OrderType, 0) = 0 AND OrdD_Count > 0 THEN OrdD_Count ELSE 0 END"),
    QLatin1String("CASE WHEN OrdD_OrderType = 1 THEN OrdD_Count ELSE 0 END"),
    QLatin1String("CASE WHEN OrdD_OrderType = 2 THEN OrdD_Count ELSE 0 END"),
    QLatin1String("CASE WHEN COALESCE(OrdD_OrderType, 0) = 0 AND OrdD_Count < 0 THEN OrdD_Count ELSE 0 END"),
    QLatin1String("(OrdD_UnitPrice - COALESCE(OrdD_HalinUnit, 0)) * OrdD_Count")};
static_assert(std::size(ofLine) == SalesItemReport::Amounts);
constexpr QLatin1String amountNames[] = {QLatin1String("Sold"), QLatin1String("Service"), QLatin1String("Lost"),
                                         QLatin1String("Returned"), QLatin1String("Net")};

/// "SUM(...) AS Sold, ... AS Net ", from the first of them on.
QString amounts(SalesItemReport::Amount first, Summed summed)
{
    QStringList all;
    for (std::size_t amount = first; amount < SalesItemReport::Amounts; ++amount)
        all << (summed == Summed::Yes ? QStringLiteral("SUM(%1) AS %2") : QStringLiteral("%1 AS %2"))
                   .arg(ofLine[amount], amountNames[amount]);
    return all.join(QStringLiteral(", ")) + u' ';
}

QString byProduct(SalesItemReport::Amount first, Summed summed)
{
    const QString lines =
        QStringLiteral("SELECT tPSOrderDetail.PM_PK, %1FROM %2").arg(amounts(first, summed), linesOfOrders());
    return summed == Summed::Yes ? lines + QStringLiteral("GROUP BY tPSOrderDetail.PM_PK") : lines;
}

} // namespace

QString salesItem::products()
{
    return QStringLiteral(
        "SELECT PM_PK, PM_Catagory, PM_Name FROM tPSProductMaster WHERE PM_PK BETWEEN [FROM] AND [TO]");
}

QString salesItem::productBounds()
{
    return keyBounds("PM_PK", "tPSProductMaster");
}

QString salesItem::linesByProduct(Summed summed)
{
    return byProduct(SalesItemReport::Sold, summed);
}

QString salesItem::linesByOrder(const QString &condition)
{
    const QString keys = QStringLiteral(
        "tPSOrderMaster.OrdM_PK, tPSOrderMaster.Cust_PK, tPSOrderMaster.OrdM_Date, tPSOrderDetail.PM_PK");
    return QStringLiteral("SELECT %1, %2FROM %3%4GROUP BY %1")
        .arg(keys, amounts(SalesItemReport::Sold, Summed::Yes), linesOfOrders(), condition);
}

QString salesItem::netByProduct(Summed summed)
{
    return byProduct(SalesItemReport::Net, summed);
}

Figure SalesItemReport::productNames()
{
    Figure products{salesItem::products(), Figure::Slices::Keys, salesItem::productBounds()};
    products.take = [this](const Record &row) {
        category_ = texts_.keep(category_, row, 1);
        products_[row.key(0)] = {category_, texts_.keep({}, row, 2)};
    };
    return products;
}

std::vector<Figure> SalesItemReport::figures(const Period &period)
{
    period_ = period;
    products_.clear();
    texts_ = {};
    category_ = {};
    sums_.clear();
    months_.clear(period);
    Figure lines{salesItem::linesByProduct(Summed::Yes), Figure::Slices::Keys, orderBounds()};
    lines.unsummed = salesItem::linesByProduct(Summed::No);
    lines.take = [this](const Record &row) {
        Sums &sums = sums_[row.key(0)];
        for (std::size_t amount = 0; amount < Amounts; ++amount)
            sums[amount] += row.amount(int(amount) + 1);
    };
    return {productNames(), lines};
}

std::vector<Figure> SalesItemReport::figuresOf(int view, const Period &period)
{
    std::vector<Figure> all = figures(period);
    if (view != MonthView)
        return all;
    all.pop_back(); // the period's lines as a whole
    for (const MonthTable::Year year : {MonthTable::This, MonthTable::Last}) {
        for (std::size_t month = 0; month < months_.months().size(); ++month) {
            Figure net{salesItem::netByProduct(Summed::Yes), Figure::Slices::Keys, orderBounds()};
            net.unsummed = salesItem::netByProduct(Summed::No);
            net.days = months_.periodOf(month, year);
            net.take = [this, month, year](const Record &row) { months_.add(row.key(0), month, year, row.amount(1)); };
            all.push_back(net);
        }
    }
    return all;
}

SalesItemReport::Product SalesItemReport::productOf(int key) const
{
    const KeptProduct *const kept = products_.find(key);
    return kept ? Product{QString::fromUtf8(kept->category), QString::fromUtf8(kept->name)}
                : Product{{}, QStringLiteral("(삭제된 물품 %1)").arg(key)};
}

std::vector<SalesItemReport::Line> SalesItemReport::linesByProduct() const
{
    std::vector<Line> lines;
    for (const auto *one : sums_.inOrder())
        lines.push_back({productOf(one->first), one->second, {one->first}});
    return lines;
}

std::vector<SalesItemReport::Line> SalesItemReport::linesByCategory() const
{
    std::map<QString, Line> groups;
    for (const Line &line : linesByProduct()) {
        const QString &category = line.product.category;
        Line &group = groups[category];
        group.product.category = category.isEmpty() ? QStringLiteral("(분류 없음)") : category;
        group.keys.push_back(line.keys.front());
        for (std::size_t amount = 0; amount < Amounts; ++amount)
            group.sums[amount] += line.sums[amount];
    }
    std::vector<Line> lines;
    for (auto &[category, line] : groups)
        lines.push_back(std::move(line));
    return lines;
}

std::vector<SalesItemReport::Line> SalesItemReport::linesOf(int view) const
{
    std::vector<Line> lines = view == CategoryView ? linesByCategory() : linesByProduct();
    std::stable_sort(lines.begin(), lines.end(),
                     [](const Line &a, const Line &b) { return a.sums[Net] > b.sums[Net]; });
    return lines;
}

Sheet SalesItemReport::makeSheet(int view) const
{
    if (view == MonthView)
        return monthSheet();
    const bool byCategory = view == CategoryView;
    const std::vector<Line> lines = linesOf(view);

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
        Row row = byCategory ? Row{line.product.category} : Row{line.product.category, line.product.name};
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

Sheet SalesItemReport::monthSheet() const
{
    Sheet sheet;
    // What is compared stands beside the name; the months may have to be scrolled.
    sheet.columns = {{QStringLiteral("물품명"), Column::Kind::Text, 140},
                     {QStringLiteral("합계"), Column::Kind::Money, 80},
                     {QStringLiteral("전년 동기"), Column::Kind::Money, 80}};
    Chart &chart = sheet.chart;
    chart.title = QStringLiteral("월별 순매출");
    chart.beside = true;
    chart.series = {{QStringLiteral("이 기간"), {}}, {QStringLiteral("전년 동기"), {}}};
    const std::vector<Sum> totals = months_.totals(MonthTable::This);
    const std::vector<Sum> before = months_.totals(MonthTable::Last);
    MonthTable::Line sum{0, totals, {}, {}};
    for (std::size_t month = 0; month < totals.size(); ++month) {
        sheet.columns.push_back({months_.captionOf(month), Column::Kind::Money, 64});
        chart.categories << months_.captionOf(month);
        chart.series[0].values.push_back(totals[month].orZero());
        chart.series[1].values.push_back(before[month].orZero());
        sum.total += totals[month];
        sum.lastYear += before[month];
    }
    const auto rowOfLine = [](const QString &caption, MonthTable::Line line) {
        line.months.insert(line.months.begin(), {line.total, line.lastYear});
        return rowOfAmounts(caption, line.months);
    };
    const std::vector<MonthTable::Line> lines = months_.lines();
    for (const MonthTable::Line &line : lines)
        sheet.rows.push_back(rowOfLine(productOf(line.product).name, line));
    sheet.totals = rowOfLine(QStringLiteral("합계"), sum);
    if (lines.empty())
        chart.categories.clear();
    sheet.remark = QStringLiteral("순매출은 할인과 반품을 뺀 금액입니다. 전년 동기: %1")
                       .arg(months_.whole(MonthTable::Last).text());
    return sheet;
}

std::optional<Behind> SalesItemReport::behind(int view, int row, int column) const
{
    const Sheet shown = makeSheet(view);
    const int texts = view == ProductView ? 2 : 1;
    const int result = view == MonthView ? texts : texts + int(Net);
    const auto place = std::size_t(column < texts ? result : column);
    Behind behind{QStringLiteral("합계"), shown.columns[place], {}, period_, {}, {}};
    if (view == MonthView) {
        behind.period = place < 3 ? months_.whole(place == 1 ? MonthTable::This : MonthTable::Last)
                                  : months_.periodOf(place - 3, MonthTable::This);
        behind.column.caption = QStringLiteral("순매출");
    }
    std::vector<int> keys;
    if (row < 0) {
        behind.figure = shown.totals[place];
    } else {
        behind.figure = shown.rows[std::size_t(row)][place];
        keys = view == MonthView ? std::vector<int>{months_.lines()[std::size_t(row)].product}
                                 : linesOf(view)[std::size_t(row)].keys;
        behind.of = plainText(shown.rows[std::size_t(row)][view == ProductView ? 1 : 0]);
    }
    const QString condition =
        keys.size() == 1 ? QStringLiteral("AND tPSOrderDetail.PM_PK = %1 ").arg(keys.front()) : QString();
    behind.orders = {salesItem::linesByOrder(condition), Figure::Slices::Keys, orderBounds()};
    const std::size_t amount = view == MonthView ? std::size_t(Net) : place - std::size_t(texts);
    std::sort(keys.begin(), keys.end());
    behind.amount = [keys, all = row < 0, amount](const Record &record) {
        return all || std::binary_search(keys.begin(), keys.end(), record.key(3)) ? record.amount(int(amount) + 4)
                                                                                  : Sum();
    };
    return behind;
}

} // namespace statistics
