#pragma once

#include "platform/ado/RowOrder.h"
#include "platform/ado/SortKey.h"

#include <cstdint>
#include <vector>

namespace ado {

/// The keys of one column. As long as few rows have to be told apart by it each is made for its comparison, then those of all.
class SortColumn
{
public:
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

    /// `singly`: comparisons before the keys of all are made. The table must outlive this.
    SortColumn(const CellTable &table, OrderColumn column, std::size_t singly)
        : table_(table)
        , column_(column.column)
        , descending_(column.descending)
        , singly_(singly)
    {
    }

    int compare(std::uint32_t a, std::uint32_t b)
    {
        if (keys_.empty() && singly_ > 0) {
            --singly_;
            return turned(keyOf(a).compare(keyOf(b)));
        }
        const std::vector<SortKey> &made = keys();
        return turned(made[a].compare(made[b]));
    }

    /// `from`: how many bytes of the text go before it, in which the rows do not differ.
    Beginning beginningOf(std::uint32_t row, std::size_t from);
    /// Where rows that do not differ in all of that Beginning may do so next.
    std::size_t behind(std::uint32_t row, std::size_t from)
    {
        return from == 0 ? keys()[row].covered : from + sizeof(Sixteen);
    }

private:
    int turned(int ascending) const { return descending_ ? -ascending : ascending; }
    SortKey keyOf(std::uint32_t row) { return sortKeyOf(table_, static_cast<int>(row), column_, folded_); }
    const std::vector<SortKey> &keys()
    {
        if (keys_.empty())
            makeKeys();
        return keys_;
    }
    void makeKeys();

    const CellTable &table_;
    int column_;
    bool descending_;
    std::size_t singly_;
    std::vector<SortKey> keys_;
    TextBlocks folded_;
};

} // namespace ado
