#pragma once

#include "platform/ado/CellTable.h"

#include <cstdint>
#include <span>
#include <vector>

namespace ado {

struct OrderColumn
{
    int column;
    bool descending = false;
};

/// Row numbers of the table in the clinic server's order, whatever the engine's own collation: NULL lowest, numbers by
/// value, texts by code point with case folded; equal rows by `keyColumn` where there is one (-1: none), else as they came.
/// `nearly`: all row numbers, each once, in an order that is thought to be nearly the right one; the better the guess, the
/// less there is to sort. Passed over when it is not of the table's length.
std::vector<std::uint32_t> orderedRows(const CellTable &table, std::span<const OrderColumn> columns, int keyColumn,
                                       std::vector<std::uint32_t> nearly = {});

/// The first ones of that order.
std::vector<std::uint32_t> firstRows(const CellTable &table, std::span<const OrderColumn> columns, int keyColumn,
                                     std::size_t number);

/// Puts a few rows where they belong among those of `order`, which stand in that order already.
void placeRows(const CellTable &table, std::span<const OrderColumn> columns, int keyColumn,
               std::vector<std::uint32_t> &order, std::span<const std::uint32_t> rows);

} // namespace ado
