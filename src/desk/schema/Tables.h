#pragma once

#include "clinic/Tables.h"

#include <QStringList>

#include <span>

namespace schema {

// The clinic's own list, which is all that there is to plan.
using TablePlan = clinic::Table;
using ColumnPlan = clinic::Column;
using Holds = ado::ColumnType;

struct IndexPlan
{
    const char *name;
    const char *table;
    const char *columns;
    const char *rows = ""; ///< condition of the rows that stand in it; all rows where it is empty
};

inline std::span<const TablePlan> tablePlans()
{
    return clinic::tables();
}
std::span<const IndexPlan> indexPlans();

enum class Dialect { SQLite, PostgreSQL };

QString createTableStatement(const TablePlan &table, Dialect dialect);
QString createIndexStatement(const IndexPlan &index);
/// What gives LIKE on PostgreSQL the clinic server's meaning, one statement each.
QStringList postgresLikeStatements();
/// What PostgreSQL's planner is told of a clinic, one statement each; it holds for the sessions that begin later.
QStringList postgresPlannerStatements();

} // namespace schema
