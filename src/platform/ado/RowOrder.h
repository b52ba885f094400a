#pragma once

#include "platform/ado/CellTable.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace ado {

struct OrderColumn
{
    int column;
    bool descending = false;
};

/// Row numbers of a table in the clinic server's order, whatever the engine's own collation: NULL lowest, numbers by
/// value, texts by code point with case folded; equal rows by `keyColumn` where there is one (-1: none), else as they came.
/// `nearly`: all row numbers, each once, in an order that is thought to be nearly the right one; the better the guess, the
/// less there is to sort. Passed over when it is not of the table's length.
class RowOrdering
{
public:
    RowOrdering(std::shared_ptr<const CellTable> table, std::span<const OrderColumn> columns, int keyColumn,
                std::vector<std::uint32_t> nearly = {});
    ~RowOrdering();
    RowOrdering(RowOrdering &&) noexcept;
    RowOrdering &operator=(RowOrdering &&) = delete;

    std::size_t count() const; ///< of all rows
    /// That many at the beginning, in much less time than all.
    std::vector<std::uint32_t> first(std::size_t number);
    std::vector<std::uint32_t> all();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/// Puts a few rows where they belong among those of `order`, which stand in that order already.
void placeRows(const CellTable &table, std::span<const OrderColumn> columns, int keyColumn,
               std::vector<std::uint32_t> &order, std::span<const std::uint32_t> rows);

} // namespace ado
