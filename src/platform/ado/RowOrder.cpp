#include "platform/ado/RowOrder.h"

#include "platform/ado/ColumnValue.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <numeric>
#include <string_view>

namespace ado {

namespace {

constexpr std::uint64_t signBit = std::uint64_t{1} << 63;

/// What one cell sorts by. Most comparisons end within it: at the number itself, or at the beginning of the text, which lies
/// far off. A date or a name of eight syllables is all in it.
struct SortKey
{
    std::uint64_t prefix = 0;
    std::uint64_t next = 0;
    const char *text = nullptr;
    std::uint32_t length = 0;
    bool inside = true; ///< all of it is in the two numbers
    enum Rank : std::uint8_t { Null, Number, Text } rank = Null;
    std::uint8_t covered = 0; ///< bytes of the text that are in them whole
};

/// What a byte of a text may be a part of.
enum Letters : std::uint8_t {
    NoCase = 0,
    Capital = 1,   ///< of ASCII
    OtherCase = 2, ///< a letter with a case outside ASCII; Hangul and Han have none
};

constexpr std::array<std::uint8_t, 256> lettersOfBytes = [] {
    std::array<std::uint8_t, 256> letters{};
    for (unsigned byte = 0; byte < letters.size(); ++byte) {
        const bool other = (byte >= 0xc3 && byte <= 0xe2) || byte == 0xef || byte == 0xf0;
        letters[byte] = other ? OtherCase : byte >= 'A' && byte <= 'Z' ? Capital : NoCase;
    }
    return letters;
}();

/// The text with case folded; most texts are so already and stay where they are.
std::string_view folded(std::string_view utf8, TextBlocks &others)
{
    unsigned letters = NoCase;
    for (char c : utf8)
        letters |= lettersOfBytes[static_cast<unsigned char>(c)];
    if (letters == NoCase)
        return utf8;
    std::string result;
    if (letters & OtherCase) {
        result = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())).toCaseFolded().toStdString();
    } else {
        result = utf8;
        for (char &c : result)
            c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return {others.add(result.data(), result.size()), result.size()};
}

/// Sixteen bytes of a text, which go up as it does.
struct Sixteen
{
    std::array<unsigned char, 16> bytes{};

    std::uint64_t prefix() const { return qFromBigEndian<quint64>(bytes.data()); }
    std::uint64_t next() const { return qFromBigEndian<quint64>(bytes.data() + bytes.size() / 2); }
};

/// The beginning of a text with each syllable of Hangul in two bytes instead of three.
class Packed
{
public:
    explicit Packed(std::string_view utf8)
    {
        for (std::size_t at = 0; at < utf8.size() && length_ <= packed_.bytes.size();) {
            at += pack(utf8.substr(at));
            covered_ = length_ <= packed_.bytes.size() ? at : covered_;
        }
    }

    const Sixteen &bytes() const { return packed_; }
    /// Behind the end stand zeros: with one of its own a text looks like a shorter one.
    bool isWhole() const { return length_ <= packed_.bytes.size() && !hasZero_; }
    /// Bytes of the text of which nothing is missing; 0 where a zero is among them.
    std::size_t covered() const { return hasZero_ ? 0 : covered_; }

private:
    static constexpr unsigned firstSyllable = 0xac00, lastSyllable = 0xd7a3;
    static constexpr unsigned char below = 0x80,
                                   above = 0xad; ///< of a sign that is no syllable, whose own bytes follow

    /// The first sign; the bytes that it took.
    std::size_t pack(std::string_view utf8)
    {
        const auto first = static_cast<unsigned char>(utf8.front());
        if (first < 0x80) {
            hasZero_ = hasZero_ || first == 0;
            put(first);
            return 1;
        }
        const unsigned code = threeBytes(utf8);
        if (code >= firstSyllable && code <= lastSyllable) {
            put(static_cast<unsigned char>(below + 1 + (code - firstSyllable) / 256));
            put(static_cast<unsigned char>((code - firstSyllable) % 256));
            return 3;
        }
        const std::size_t size = std::min<std::size_t>(utf8.size(), first >= 0xf0   ? 4
                                                                    : first >= 0xe0 ? 3
                                                                    : first >= 0xc0 ? 2
                                                                                    : 1);
        put(code ? code < firstSyllable ? below : above : first < 0xea ? below : above);
        for (std::size_t at = 0; at < size; ++at)
            put(static_cast<unsigned char>(utf8[at]));
        return size;
    }

    /// The code of a sign of that many; else 0.
    static unsigned threeBytes(std::string_view utf8)
    {
        const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(utf8[at]); };
        const bool are = utf8.size() >= 3 && byte(0) >> 4 == 0xe && byte(1) >> 6 == 2 && byte(2) >> 6 == 2;
        return are ? (byte(0) & 0xfU) << 12 | (byte(1) & 0x3fU) << 6 | (byte(2) & 0x3fU) : 0;
    }

    void put(unsigned char byte)
    {
        if (length_ < packed_.bytes.size())
            packed_.bytes[length_] = byte;
        ++length_;
    }

    Sixteen packed_;
    std::size_t length_ = 0, covered_ = 0;
    bool hasZero_ = false;
};

std::uint64_t realPrefix(double value)
{
    const auto bits = std::bit_cast<std::uint64_t>(value == 0 ? 0.0 : value);
    return bits & signBit ? ~bits : bits | signBit;
}

/// Whether most rows will be compared, or a handful.
enum class Compared { Most, Few };

/// The keys of one column, made when rows first have to be told apart by it; where few are compared, each for its comparison.
class SortColumn
{
public:
    SortColumn(const CellTable &table, OrderColumn column, Compared compared)
        : table_(table)
        , column_(column.column)
        , descending_(column.descending)
        , compared_(compared)
    {
    }

    int compare(std::uint32_t a, std::uint32_t b)
    {
        const int ascending = compared_ == Compared::Few ? compareKeys(keyOf(a), keyOf(b)) : compareMade(a, b);
        return descending_ ? -ascending : ascending;
    }
    /// What most comparisons end at, so that a sort need not look the rows up. Goes up in the column's order.
    struct Beginning
    {
        /// What there is of the text behind it, in which rows that begin alike may differ.
        enum class Rest : std::uint8_t { None, Further, Unclear };

        std::uint64_t prefix, next;
        std::uint32_t row;
        std::uint8_t rank;
        Rest rest;

        friend bool operator<(const Beginning &a, const Beginning &b)
        {
            if (a.prefix != b.prefix && a.rank == b.rank)
                return a.prefix < b.prefix;
            return a.rank != b.rank ? a.rank < b.rank : a.next < b.next;
        }
    };
    /// `from`: how many bytes of the text go before it, in which the rows do not differ.
    Beginning beginningOf(std::uint32_t row, std::size_t from)
    {
        SortKey key = keys()[row];
        if (from > 0) {
            const std::string_view rest = std::string_view(key.text, key.length).substr(from, sizeof(Sixteen));
            Sixteen bytes;
            std::ranges::copy(rest, bytes.bytes.begin());
            key.prefix = bytes.prefix();
            key.next = bytes.next();
            key.inside = from + rest.size() == key.length && rest.find('\0') == std::string_view::npos;
        }
        using Rest = Beginning::Rest;
        const bool further = from > 0 ? key.length > from + sizeof(Sixteen) : key.covered > 0;
        const std::uint64_t turned = descending_ ? ~std::uint64_t{0} : 0;
        const Rest behindIt = key.inside ? Rest::None : further ? Rest::Further : Rest::Unclear;
        return {key.prefix ^ turned, key.next ^ turned, row, static_cast<std::uint8_t>(key.rank ^ turned), behindIt};
    }

    /// Where rows that do not differ in all of that Beginning may do so next.
    std::size_t behind(std::uint32_t row, std::size_t from)
    {
        return from == 0 ? keys()[row].covered : from + sizeof(Sixteen);
    }

private:
    int compareMade(std::uint32_t a, std::uint32_t b)
    {
        const std::vector<SortKey> &made = keys();
        return compareKeys(made[a], made[b]);
    }

    const std::vector<SortKey> &keys()
    {
        const auto rows = static_cast<std::size_t>(table_.rowCount());
        if (keys_.size() != rows) {
            keys_.reserve(rows);
            for (std::size_t row = 0; row < rows; ++row)
                keys_.push_back(keyOf(static_cast<std::uint32_t>(row)));
        }
        return keys_;
    }

    SortKey keyOf(std::uint32_t row)
    {
        const CellTable::Cell &cell = table_.cell(static_cast<int>(row), column_);
        const ResultColumn &description = table_.columns()[static_cast<std::size_t>(column_)];
        if (cell.kind == CellTable::Kind::Null)
            return {};
        const ColumnType type = description.registered ? description.registered->type
                                : description.numeric || cell.kind != CellTable::Kind::Text ? ColumnType::Money
                                                                                            : ColumnType::Text;
        if (type == ColumnType::Number)
            return {realPrefix(typedValue(table_, cell, type).toDouble()), 0, nullptr, 0, true, SortKey::Number};
        if (type != ColumnType::Text && type != ColumnType::Date)
            return {static_cast<std::uint64_t>(moneyOf(table_, cell).scaled()) ^ signBit,
                    0,
                    nullptr,
                    0,
                    true,
                    SortKey::Number};
        if (cell.kind != CellTable::Kind::Text)
            return {0, 0, nullptr, 0, true, SortKey::Text};
        const QByteArrayView text = table_.text(cell);
        const std::string_view sorted = folded({text.data(), static_cast<std::size_t>(text.size())}, folded_);
        const Packed packed(sorted);
        return {packed.bytes().prefix(),
                packed.bytes().next(),
                sorted.data(),
                static_cast<std::uint32_t>(sorted.size()),
                packed.isWhole(),
                SortKey::Text,
                static_cast<std::uint8_t>(packed.covered())};
    }

    static int compareKeys(const SortKey &a, const SortKey &b)
    {
        if (a.rank != b.rank)
            return a.rank < b.rank ? -1 : 1;
        if (a.prefix != b.prefix)
            return a.prefix < b.prefix ? -1 : 1;
        if (a.next != b.next)
            return a.next < b.next ? -1 : 1;
        if (a.inside && b.inside)
            return 0;
        return std::string_view(a.text, a.length).compare(std::string_view(b.text, b.length));
    }

    const CellTable &table_;
    int column_;
    bool descending_;
    Compared compared_;
    std::vector<SortKey> keys_;
    TextBlocks folded_;
};

/// Compares rows by all columns.
class Order
{
public:
    Order(const CellTable &table, std::span<const OrderColumn> columns, int keyColumn, Compared compared)
    {
        for (const OrderColumn &column : columns)
            columns_.emplace_back(table, column, compared);
        if (keyColumn >= 0)
            columns_.emplace_back(table, OrderColumn{keyColumn}, compared);
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

std::vector<std::uint32_t> asTheyCame(int count)
{
    std::vector<std::uint32_t> rows(static_cast<std::size_t>(count));
    std::iota(rows.begin(), rows.end(), 0U);
    return rows;
}

} // namespace

std::vector<std::uint32_t> orderedRows(const CellTable &table, std::span<const OrderColumn> columns, int keyColumn,
                                       std::vector<std::uint32_t> nearly)
{
    Order order(table, columns, keyColumn, Compared::Most);
    if (nearly.size() != static_cast<std::size_t>(table.rowCount()))
        nearly = asTheyCame(table.rowCount());
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

std::vector<std::uint32_t> firstRows(const CellTable &table, std::span<const OrderColumn> columns, int keyColumn,
                                     std::size_t number)
{
    Order order(table, columns, keyColumn, Compared::Most);
    std::vector<std::uint32_t> rows = asTheyCame(table.rowCount());
    const auto end = rows.begin() + static_cast<std::ptrdiff_t>(std::min(number, rows.size()));
    std::ranges::partial_sort(rows, end, [&](std::uint32_t a, std::uint32_t b) { return order.before(a, b); });
    rows.erase(end, rows.end());
    return rows;
}

void placeRows(const CellTable &table, std::span<const OrderColumn> columns, int keyColumn,
               std::vector<std::uint32_t> &order, std::span<const std::uint32_t> rows)
{
    Order belongs(table, columns, keyColumn, Compared::Few);
    const auto before = [&](std::uint32_t a, std::uint32_t b) { return belongs.before(a, b); };
    for (std::uint32_t row : rows)
        order.insert(std::ranges::upper_bound(order, row, before), row);
}

} // namespace ado
