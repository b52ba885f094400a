#include "platform/ado/SortKey.h"

#include "platform/ado/ColumnValue.h"

#include <QString>

#include <algorithm>
#include <bit>
#include <string>

namespace ado {

namespace {

constexpr std::uint64_t signBit = std::uint64_t{1} << 63;

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
std::string_view withCaseFolded(std::string_view utf8, TextBlocks &others)
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

} // namespace

SortKey sortKeyOf(const CellTable &table, int row, int column, TextBlocks &folded)
{
    const CellTable::Cell cell = table.cell(row, column);
    const ResultColumn &description = table.columns()[static_cast<std::size_t>(column)];
    if (cell.kind == CellTable::Kind::Null)
        return {};
    const ColumnType type = description.registered                                      ? description.registered->type
                            : description.numeric || cell.kind != CellTable::Kind::Text ? ColumnType::Money
                                                                                        : ColumnType::Text;
    if (type == ColumnType::Number)
        return {realPrefix(typedValue(table, cell, type).toDouble()), 0, nullptr, 0, true, SortKey::Number};
    if (type != ColumnType::Text && type != ColumnType::Date)
        return {
            static_cast<std::uint64_t>(moneyOf(table, cell).scaled()) ^ signBit, 0, nullptr, 0, true, SortKey::Number};
    if (cell.kind != CellTable::Kind::Text)
        return {0, 0, nullptr, 0, true, SortKey::Text};
    const QByteArrayView text = table.text(cell);
    const std::string_view sorted = withCaseFolded({text.data(), static_cast<std::size_t>(text.size())}, folded);
    const Packed packed(sorted);
    return {packed.bytes().prefix(),
            packed.bytes().next(),
            sorted.data(),
            static_cast<std::uint32_t>(sorted.size()),
            packed.isWhole(),
            SortKey::Text,
            static_cast<std::uint8_t>(packed.covered())};
}

} // namespace ado
