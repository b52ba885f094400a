#pragma once

#include "platform/ado/CellTable.h"

#include <QtEndian>

#include <array>
#include <cstdint>
#include <string_view>

namespace ado {

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

    /// Below 0 where this one comes first, as it goes up; 0 where both are the same.
    int compare(const SortKey &other) const
    {
        if (rank != other.rank)
            return rank < other.rank ? -1 : 1;
        if (prefix != other.prefix)
            return prefix < other.prefix ? -1 : 1;
        if (next != other.next)
            return next < other.next ? -1 : 1;
        if (inside && other.inside)
            return 0;
        return std::string_view(text, length).compare(std::string_view(other.text, other.length));
    }
};

/// Sixteen bytes of a text, which go up as it does.
struct Sixteen
{
    std::array<unsigned char, 16> bytes{};

    std::uint64_t prefix() const { return qFromBigEndian<quint64>(bytes.data()); }
    std::uint64_t next() const { return qFromBigEndian<quint64>(bytes.data() + bytes.size() / 2); }
};

/// The key of a cell; the table must outlive it. `folded` takes what has to be written otherwise to be compared.
SortKey sortKeyOf(const CellTable &table, int row, int column, TextBlocks &folded);

} // namespace ado
