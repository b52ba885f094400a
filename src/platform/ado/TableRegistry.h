#pragma once

#include <QString>

#include <span>

namespace ado {

/// How a column's values are read and bound, whatever the engine says of its own types.
enum class ColumnType { Key, Long, Integer, Flag, Money, Number, Date, Text };

struct Column
{
    const char16_t *name;
    ColumnType type;
};

/// One of the ten tables that the system reads or writes: spelling, key and column types.
struct Table
{
    const char16_t *name;
    const char16_t *key;
    std::span<const Column> columns;

    const Column *column(QStringView name) const; ///< ignores case; null when absent
};

std::span<const Table> tables();
const Table *findTable(QStringView name); ///< ignores case
/// The first registered column of that name in any table; null when none has it.
const Column *findColumn(QStringView name);

} // namespace ado
