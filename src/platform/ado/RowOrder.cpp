#include "platform/ado/RowOrder.h"

#include "platform/ado/SortColumn.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace ado {

/// Whether most rows will be compared, or a handful.
enum class Compared { Most, Few };

/// Compares rows by all columns.
class RowComparison
{
public:
    RowComparison(const CellTable &table, std::span<const OrderColumn> columns, int keyColumn, Compared compared)
    {
        for (const OrderColumn &column : columns)
            add(table, column, compared);
        if (keyColumn >= 0)
            add(table, OrderColumn{keyColumn}, compared);
    }

    bool before(std::uint32_t a, std::uint32_t b)
    {
        for (SortColumn &column : columns_) {
            if (const int order = column.compare(a, b))
                return order < 0;
        }
        return a < b;
    }

    void sort(std::span<std::uint32_t> rows) { sort(rows, 0, 0); }

private:
    /// By those behind the first one only rows are compared that are alike in it.
    void add(const CellTable &table, OrderColumn column, Compared compared)
    {
        constexpr auto always = std::numeric_limits<std::size_t>::max();
        const std::size_t some = columns_.empty() ? 0 : static_cast<std::size_t>(table.rowCount()) / 16;
        columns_.emplace_back(table, column, compared == Compared::Few ? always : some);
    }

    /// Those that do not differ in the columns before that one, nor before that place of its texts.
    void sort(std::span<std::uint32_t> rows, std::size_t column, std::size_t from)
    {
        constexpr std::size_t few = 8, farthest = 100;
        if (column == columns_.size()) {
            std::ranges::sort(rows);
            return;
        }
        std::vector<SortColumn::Beginning> beginnings;
        beginnings.reserve(rows.size());
        for (std::uint32_t row : rows)
            beginnings.push_back(columns_[column].beginningOf(row, from));
        std::sort(beginnings.begin(), beginnings.end());
        std::ranges::transform(beginnings, rows.begin(), &SortColumn::Beginning::row);
        for (auto first = beginnings.begin(), end = first; first != beginnings.end(); first = end) {
            end = std::find_if(first, beginnings.end(), [&](const auto &other) { return *first < other; });
            const auto same = rows.subspan(std::size_t(first - beginnings.begin()), std::size_t(end - first));
            using Rest = SortColumn::Beginning::Rest;
            const auto all = [&](Rest rest) {
                return std::all_of(first, end, [rest](const auto &one) { return one.rest == rest; });
            };
            if (same.size() > few && all(Rest::None))
                sort(same, column + 1, 0);
            else if (same.size() > few && from < farthest && all(Rest::Further))
                sort(same, column, columns_[column].behind(first->row, from));
            else if (same.size() > 1)
                std::ranges::sort(same, [this](std::uint32_t a, std::uint32_t b) { return before(a, b); });
        }
    }

    std::vector<SortColumn> columns_;
};

namespace {

std::vector<std::uint32_t> asTheyCame(std::size_t count)
{
    std::vector<std::uint32_t> rows(count);
    std::iota(rows.begin(), rows.end(), 0U);
    return rows;
}

} // namespace

struct RowOrdering::Private
{
    std::shared_ptr<const CellTable> table;
    std::vector<OrderColumn> columns;
    int keyColumn;
    std::vector<std::uint32_t> nearly;

    /// With keys of its own: kept until somebody looks further, they would take a fifth of the list's room once more.
    RowComparison comparison() const { return {*table, columns, keyColumn, Compared::Most}; }
};

RowOrdering::RowOrdering(std::shared_ptr<const CellTable> table, std::span<const OrderColumn> columns, int keyColumn,
                         std::vector<std::uint32_t> nearly)
    : d(new Private{std::move(table), {columns.begin(), columns.end()}, keyColumn, std::move(nearly)})
{
}

RowOrdering::~RowOrdering() = default;

RowOrdering::RowOrdering(RowOrdering &&) noexcept = default;

std::size_t RowOrdering::count() const
{
    return static_cast<std::size_t>(d->table->rowCount());
}

std::vector<std::uint32_t> RowOrdering::all()
{
    RowComparison order = d->comparison();
    std::vector<std::uint32_t> nearly = std::move(d->nearly);
    if (nearly.size() != count())
        nearly = asTheyCame(count());
    // Where two neighbours stand wrongly, either may be the one that has moved: both are set aside.
    std::vector<std::uint32_t> standing, aside;
    standing.reserve(nearly.size());
    for (std::uint32_t row : nearly) {
        if (standing.empty() || !order.before(row, standing.back())) {
            standing.push_back(row);
            continue;
        }
        aside.insert(aside.end(), {standing.back(), row});
        standing.pop_back();
    }
    if (aside.size() > standing.size()) { // there was no order
        order.sort(nearly);
        return nearly;
    }
    order.sort(aside);
    const auto middle = static_cast<std::ptrdiff_t>(standing.size());
    standing.insert(standing.end(), aside.begin(), aside.end());
    std::inplace_merge(standing.begin(), standing.begin() + middle, standing.end(),
                       [&](std::uint32_t a, std::uint32_t b) { return order.before(a, b); });
    return standing;
}

std::vector<std::uint32_t> RowOrdering::first(std::size_t number)
{
    RowComparison order = d->comparison();
    std::vector<std::uint32_t> rows = asTheyCame(count());
    const auto end = rows.begin() + static_cast<std::ptrdiff_t>(std::min(number, rows.size()));
    std::ranges::partial_sort(rows, end, [&](std::uint32_t a, std::uint32_t b) { return order.before(a, b); });
    rows.erase(end, rows.end());
    return rows;
}

void placeRows(const CellTable &table, std::span<const OrderColumn> columns, int keyColumn,
               std::vector<std::uint32_t> &order, std::span<const std::uint32_t> rows)
{
    RowComparison belongs(table, columns, keyColumn, Compared::Few);
    const auto before = [&](std::uint32_t a, std::uint32_t b) { return belongs.before(a, b); };
    for (std::uint32_t row : rows)
        order.insert(std::ranges::upper_bound(order, row, before), row);
}

} // namespace ado
