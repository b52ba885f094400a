#include "desk/schema/Schema.h"

#include "desk/schema/Tables.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/Attempt.h"

#include <algorithm>

namespace schema {

namespace {

Dialect dialectOf(const ado::Connection &connection)
{
    return connection.engine() == ado::Engine::SQLite ? Dialect::SQLite : Dialect::PostgreSQL;
}

QStringList tableStatements(Dialect dialect)
{
    QStringList statements;
    if (dialect == Dialect::PostgreSQL)
        statements = postgresLikeStatements() + postgresPlannerStatements();
    for (const TablePlan &table : tablePlans())
        statements << createTableStatement(table, dialect);
    return statements;
}

} // namespace

void createSchema(ado::Connection &connection)
{
    ado::Transaction scope(connection);
    createTables(connection);
    createIndexes(connection);
    scope.commit();
}

void createTables(ado::Connection &connection)
{
    for (const QString &statement : tableStatements(dialectOf(connection)))
        connection.Execute(statement);
}

void createIndexes(ado::Connection &connection)
{
    for (const IndexPlan &index : indexPlans())
        connection.Execute(createIndexStatement(index));
}

void continueKeys(ado::Connection &connection)
{
    // The embedded engine does so by itself.
    if (dialectOf(connection) == Dialect::SQLite)
        return;
    for (const TablePlan &table : tablePlans()) {
        for (const ColumnPlan &column : table.columns) {
            if (column.holds == Holds::Key)
                connection.Execute(continueKeyStatement(table, column));
        }
    }
}

QStringList probes()
{
    QStringList statements;
    for (const TablePlan &table : tablePlans()) {
        QStringList names;
        for (const ColumnPlan &column : table.columns)
            names << QString::fromLatin1(column.name);
        statements << QStringLiteral("SELECT %1 FROM %2 WHERE 1 = 0")
                          .arg(names.join(QStringLiteral(", ")), QString::fromLatin1(table.name));
    }
    return statements;
}

bool hasSchema(ado::Connection &connection)
{
    const QStringList statements = probes();
    return std::ranges::all_of(statements, [&](const QString &probe) {
        runtime::Attempt attempt;
        attempt([&] { connection.read(probe); });
        return !attempt.failed();
    });
}

} // namespace schema
