#include "platform/ado/RowOrder.h"

#include "platform/ado/ColumnValue.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <numeric>
#include <string_view>

namespace ado {

namespace {

constexpr std::uint64_t signBit = std::uint64_t{1} << 63;

/// What one cell sorts by. Most comparisons end at the prefix: the number itself, or the first eight bytes of the text.
struct SortKey
{
    std::uint64_t prefix = 0;
    std::size_t offset = 0;
    std::uint32_t length = 0;
    enum Rank : std::uint8_t { Null, Number, Text } rank = Null;
};

/// Whether the bytes can hold a letter with a case outside ASCII. Hangul and Han never do.
bool mayHaveCase(std::string_view utf8)
{
    return std::ranges::any_of(utf8, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return (byte >= 0xc3 && byte <= 0xe2) || byte == 0xef || byte == 0xf0;
    });
}

void appendFolded(std::string &target, std::string_view utf8)
{
    if (mayHaveCase(utf8)) {
        const QString folded = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())).toCaseFolded();
        target += folded.toStdString();
        return;
    }
    for (char c : utf8)
        target += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::uint64_t textPrefix(std::string_view text)
{
    std::uint64_t prefix = 0;
    for (std::size_t at = 0; at < 8; ++at)
        prefix = prefix << 8 | (at < text.size() ? static_cast<unsigned char>(text[at]) : 0U);
    return prefix;
}

std::uint64_t realPrefix(double value)
{
    const auto bits = std::bit_cast<std::uint64_t>(value == 0 ? 0.0 : value);
    return bits & signBit ? ~bits : bits | signBit;
}

/// The keys of one column.
class SortColumn
{
public:
    SortColumn(const CellTable &table, OrderColumn column)
        : descending_(column.descending)
    {
        const int rows = table.rowCount();
        keys_.reserve(static_cast<std::size_t>(rows));
        for (int row = 0; row < rows; ++row)
            keys_.push_back(keyOf(table, row, column.column));
    }

    int compare(std::uint32_t a, std::uint32_t b) const
    {
        const int ascending = compareKeys(keys_[a], keys_[b]);
        return descending_ ? -ascending : ascending;
    }

private:
    SortKey keyOf(const CellTable &table, int row, int column)
    {
        const CellTable::Cell &cell = table.cell(row, column);
        const ResultColumn &description = table.columns()[static_cast<std::size_t>(column)];
        if (cell.kind == CellTable::Kind::Null)
            return {};
        const ColumnType type = description.registered ? description.registered->type
            : description.numeric || cell.kind != CellTable::Kind::Text ? ColumnType::Money
                                                                          : ColumnType::Text;
        if (type == ColumnType::Number)
            return {realPrefix(typedValue(table, cell, type).toDouble()), 0, 0, SortKey::Number};
        if (type != ColumnType::Text && type != ColumnType::Date)
            return {static_cast<std::uint64_t>(moneyOf(table, cell).scaled()) ^ signBit, 0, 0, SortKey::Number};
        const QByteArrayView text = table.text(cell);
        SortKey key{0, folded_.size(), 0, SortKey::Text};
        if (cell.kind == CellTable::Kind::Text)
            appendFolded(folded_, {text.data(), static_cast<std::size_t>(text.size())});
        key.length = static_cast<std::uint32_t>(folded_.size() - key.offset);
        key.prefix = textPrefix({folded_.data() + key.offset, key.length});
        return key;
    }

    int compareKeys(const SortKey &a, const SortKey &b) const
    {
        if (a.rank != b.rank)
            return a.rank < b.rank ? -1 : 1;
        if (a.prefix != b.prefix)
            return a.prefix < b.prefix ? -1 : 1;
        if (a.rank != SortKey::Text)
            return 0;
        return std::string_view(folded_.data() + a.offset, a.length)
            .compare(std::string_view(folded_.data() + b.offset, b.length));
    }

    bool descending_;
    std::vector<SortKey> keys_;
    std::string folded_;
};

} // namespace

std::vector<std::uint32_t> orderedRows(const CellTable &table, std::span<const OrderColumn> columns, int keyColumn)
{
    std::vector<SortColumn> sortColumns;
    for (const OrderColumn &column : columns)
        sortColumns.emplace_back(table, column);
    if (keyColumn >= 0)
        sortColumns.emplace_back(table, OrderColumn{keyColumn});

    std::vector<std::uint32_t> rows(static_cast<std::size_t>(table.rowCount()));
    std::iota(rows.begin(), rows.end(), 0U);
    const auto before = [&](std::uint32_t a, std::uint32_t b) {
        for (const SortColumn &column : sortColumns) {
            if (const int order = column.compare(a, b))
                return order < 0;
        }
        return a < b;
    };
    if (!std::ranges::is_sorted(rows, before))
        std::ranges::sort(rows, before);
    return rows;
}

} // namespace ado
