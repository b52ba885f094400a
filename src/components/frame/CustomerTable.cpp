#include "components/frame/CustomerTable.h"

#include <algorithm>

namespace statistics {

namespace {

constexpr qsizetype bestBars = 10;

Row rowOf(const QString &chart, const QString &name, const std::vector<Sum> &amounts)
{
    Row row{chart, name};
    row.insert(row.end(), amounts.begin(), amounts.end());
    return row;
}

} // namespace

bool CustomerScope::holds(int customer) const
{
    return (std::find(keys.begin(), keys.end(), customer) != keys.end()) != isAllBut;
}

QString CustomerScope::condition(const QString &field) const
{
    return isAllBut || keys.front() == 0 ? QString() : QStringLiteral("AND %1 = %2 ").arg(field).arg(keys.front());
}

void CustomerTable::clear()
{
    customers_.clear();
    ranked_.clear();
    setOut_ = -1;
}

void CustomerTable::add(int customer, std::span<const Sum> amounts)
{
    ranked_.clear();
    std::vector<Sum> &sums = customers_[customer].amounts;
    sums.resize(columns_);
    for (std::size_t column = 0; column < columns_; ++column)
        sums[column] += amounts[column];
}

Figure CustomerTable::names()
{
    Figure names{QStringLiteral("SELECT Customer_PK, sn, name FROM Customer WHERE Customer_PK BETWEEN [FROM] AND [TO]"),
                 Figure::Slices::Keys, keyBounds("Customer_PK", "Customer")};
    names.take = [this](const Record &row) {
        if (const auto customer = customers_.find(row.key(0)); customer != customers_.end()) {
            customer->second.chart = row.text(1);
            customer->second.name = row.text(2);
        }
    };
    return names;
}

const std::vector<int> &CustomerTable::ranked() const
{
    if (!ranked_.empty())
        return ranked_;
    std::vector<std::pair<Sum, int>> amounts;
    amounts.reserve(customers_.size());
    for (const auto &[key, line] : customers_)
        amounts.emplace_back(line.amounts[leading_], key);
    std::sort(amounts.begin(), amounts.end(), [](const auto &a, const auto &b) {
        return a.first != b.first ? a.first > b.first : a.second < b.second;
    });
    for (const auto &[amount, key] : amounts)
        ranked_.push_back(key);
    return ranked_;
}

std::vector<int> CustomerTable::shown() const
{
    const std::vector<int> &all = ranked();
    std::vector<int> keys(all.begin(), all.begin() + std::ptrdiff_t(std::min(mostShown, all.size())));
    if (setOut_ >= int(keys.size()))
        keys.push_back(all[std::size_t(setOut_)]);
    return keys;
}

QString CustomerTable::nameOf(int customer) const
{
    const Line &line = customers_.at(customer);
    if (!line.name.isEmpty() || !line.chart.isEmpty())
        return line.name;
    return customer == 0 ? QStringLiteral("(고객 없음)") : QStringLiteral("(삭제된 고객 %1)").arg(customer);
}

std::vector<CustomerTable::Line> CustomerTable::lines() const
{
    std::vector<Line> lines;
    const std::vector<int> keys = shown();
    for (const int key : keys)
        lines.push_back({customers_.at(key).chart, nameOf(key), customers_.at(key).amounts});
    if (keys.size() == customers_.size())
        return lines;
    // What is left is added up by itself: an unknown amount above would make it unknown too.
    std::vector<Sum> others(columns_);
    for (const auto &[key, line] : customers_) {
        if (std::find(keys.begin(), keys.end(), key) != keys.end())
            continue;
        for (std::size_t column = 0; column < columns_; ++column)
            others[column] += line.amounts[column];
    }
    lines.push_back({{}, scopeOf(keys.size()).caption, others});
    return lines;
}

std::vector<Sum> CustomerTable::totals() const
{
    std::vector<Sum> sums(columns_);
    for (const auto &[key, line] : customers_) {
        for (std::size_t column = 0; column < columns_; ++column)
            sums[column] += line.amounts[column];
    }
    return sums;
}

void CustomerTable::fill(Sheet &sheet) const
{
    sheet.columns.insert(sheet.columns.begin(), {{QStringLiteral("챠트번호"), Column::Kind::Text, 66},
                                                 {QStringLiteral("이름"), Column::Kind::Text, 92}});
    const auto cut = [&sheet](Row row) { // a report may leave its last columns out
        row.resize(sheet.columns.size());
        return row;
    };
    const std::vector<Line> shown = lines();
    Chart &chart = sheet.chart;
    chart.series = {{sheet.columns[leading_ + 2].caption, {}}};
    chart.lying = true;
    for (const Line &line : shown) {
        const Sum &amount = line.amounts[leading_];
        const bool isCustomers = int(sheet.rows.size()) < int(std::min(mostShown, customers_.size()));
        if (isCustomers && chart.categories.size() < bestBars && amount > Sum()) {
            chart.categories << line.name + u' ' + line.chart; // names come twice
            chart.series[0].values.push_back(amount.orZero());
        }
        sheet.rows.push_back(cut(rowOf(line.chart, line.name, line.amounts)));
    }
    chart.title = QStringLiteral("%1 상위 %2").arg(chart.series[0].caption).arg(chart.categories.size());
    sheet.totals = cut(rowOf(QStringLiteral("합계"), {}, totals()));
}

CustomerScope CustomerTable::scopeOf(std::size_t line) const
{
    const std::vector<int> keys = shown();
    if (line < keys.size())
        return {nameOf(keys[line]), {keys[line]}, false};
    const auto others = std::int64_t(customers_.size() - keys.size());
    return {QStringLiteral("그 외 %1명").arg(shownText(runtime::Currency::fromWon(others))), keys, true};
}

runtime::SearchTexts CustomerTable::searchTexts() const
{
    runtime::SearchTexts texts;
    for (const int key : ranked()) {
        texts.add(nameOf(key));
        texts.add(customers_.at(key).chart);
        texts.endRow();
    }
    return texts;
}

int CustomerTable::setOut(int place)
{
    setOut_ = place;
    return place < 0 ? -1 : std::min(place, int(std::min(mostShown, customers_.size())));
}

} // namespace statistics
