#pragma once

#include <QString>

#include <span>
#include <vector>

namespace ado {

/// How a column's values are read and bound, whatever the engine says of its own types.
enum class ColumnType { Key, Long, Integer, Flag, Money, Number, Date, Text };

struct Column
{
    QString name;
    ColumnType type;
};

/// A table that the system reads or writes: spelling, key and column types.
struct Table
{
    QString name;
    QString key;
    std::vector<Column> columns;
    /// False: other programs' tables of that name may have another key or none, so the engine is asked before rows are
    /// written, and a reading relies on none.
    bool keyIsTold = true;

    const Column *column(QStringView name) const; ///< ignores case; null when absent
};

/// Makes tables known to whatever is opened from now on, on every connection, those that are open already included. They
/// stay known until the process ends. A table whose name is known already stays as it was: each component of a clinic
/// brings the same list.
void registerTables(std::span<const Table> tables);

const Table *findTable(QStringView name); ///< ignores case
/// The first registered column of that name in any table; null when none has it.
const Column *findColumn(QStringView name);

} // namespace ado
