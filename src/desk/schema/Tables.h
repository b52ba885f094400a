#pragma once

#include "clinic/Indexes.h"
#include "clinic/Tables.h"

#include <QStringList>

#include <span>

namespace schema {

// The clinic's own list, which is all that there is to plan.
using TablePlan = clinic::Table;
using ColumnPlan = clinic::Column;
using Holds = ado::ColumnType;

using IndexPlan = clinic::Index;

inline std::span<const TablePlan> tablePlans()
{
    return clinic::tables();
}
inline std::span<const IndexPlan> indexPlans()
{
    return clinic::indexes();
}

enum class Dialect { SQLite, PostgreSQL, MariaDB };

QString createTableStatement(const TablePlan &table, Dialect dialect);
QString addColumnStatement(const TablePlan &table, const ColumnPlan &column, Dialect dialect);
/// MariaDB makes an index with its table, so that it is asked for where one is missing only.
QString createIndexStatement(const IndexPlan &index, Dialect dialect);
QString dropIndexStatement(const IndexPlan &index, Dialect dialect);
/// What gives LIKE on PostgreSQL the clinic server's meaning, one statement each, in the sessions that look for it there.
QStringList postgresLikeStatements();

} // namespace schema
