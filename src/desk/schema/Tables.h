#pragma once

#include <QStringList>

#include <span>
#include <vector>

namespace schema {

/// What a column holds, whatever the engine calls it.
enum class Holds {
    Key,     ///< 32-bit, given by the database
    Long,    ///< 32-bit: the key of another row, or an amount in won
    Integer, ///< 16-bit
    Flag,    ///< 0 or 1
    Money,   ///< whole won on SQLite, four decimals elsewhere; negative in returns
    Number,  ///< double precision
    Date,    ///< "YYYY-MM-DD"
    Text,
    MethodCode,  ///< two characters
    SettingName, ///< text that is the row's key
};

struct ColumnPlan
{
    const char *name;
    Holds holds;
    bool required = false;
};

struct TablePlan
{
    const char *name;
    std::vector<ColumnPlan> columns;
};

struct IndexPlan
{
    const char *name;
    const char *table;
    const char *columns;
    const char *rows = ""; ///< condition of the rows that stand in it; all rows where it is empty
};

/// The ten tables: the sale component's seven, and the desk's patients, treatment receipts and shared settings.
std::span<const TablePlan> tablePlans();
std::span<const IndexPlan> indexPlans();

enum class Dialect { SQLite, PostgreSQL };

QString createTableStatement(const TablePlan &table, Dialect dialect);
QString createIndexStatement(const IndexPlan &index);
/// What gives LIKE on PostgreSQL the clinic server's meaning, one statement each.
QStringList postgresLikeStatements();
/// What PostgreSQL's planner is told of a clinic, one statement each; it holds for the sessions that begin later.
QStringList postgresPlannerStatements();

} // namespace schema
