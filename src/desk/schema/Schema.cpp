#include "desk/schema/Schema.h"

#include "desk/schema/Statements.h"
#include "desk/schema/Tables.h"
#include "desk/schema/Version.h"

#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>

namespace schema {

namespace {

const QString CannotPrepare = QStringLiteral("데이터베이스를 준비하지 못했습니다.\n");

Dialect demandedDialect(ado::Connection &connection)
{
    if (const std::optional<Dialect> dialect = dialectOf(connection))
        return *dialect;
    refuse(QStringLiteral("이 데이터베이스 서버의 테이블은 서버의 설치 프로그램으로 만들어야 합니다."));
}

QStringList tableStatements(Dialect dialect)
{
    QStringList statements;
    if (dialect == Dialect::PostgreSQL)
        statements = postgresLikeStatements() + postgresPlannerStatements();
    for (const TablePlan &table : tablePlans())
        statements << createTableStatement(table, dialect);
    return statements + markStatements(dialect == Dialect::PostgreSQL);
}

/// Readings without rows that a database takes only when it holds every table and column, one a table.
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

} // namespace

std::optional<Dialect> dialectOf(ado::Connection &connection)
{
    switch (connection.engine()) {
    case ado::Engine::SQLite:
        return Dialect::SQLite;
    case ado::Engine::PostgreSQL:
        return Dialect::PostgreSQL;
    case ado::Engine::Odbc:
        break;
    }
    QSqlQuery query(connection.database());
    if (query.exec(QStringLiteral("SELECT version()")) && query.next()
        && query.value(0).toString().startsWith(QLatin1String("PostgreSQL")))
        return Dialect::PostgreSQL;
    return std::nullopt;
}

void createSchema(ado::Connection &connection)
{
    QSqlDatabase database = connection.database();
    if (!database.transaction())
        refuse(CannotPrepare + database.lastError().text());
    try {
        createTables(connection);
        createIndexes(connection);
    } catch (...) {
        database.rollback();
        throw;
    }
    if (!database.commit())
        refuse(CannotPrepare + database.lastError().text());
}

void createTables(ado::Connection &connection)
{
    for (const QString &statement : tableStatements(demandedDialect(connection)))
        run(connection, statement);
}

void createIndexes(ado::Connection &connection)
{
    for (const IndexPlan &index : indexPlans())
        run(connection, createIndexStatement(index));
}

QStringList lateKeyStatements(ado::Connection &connection)
{
    QStringList statements;
    // The embedded engine counts on from the highest by itself.
    if (dialectOf(connection) != Dialect::PostgreSQL)
        return statements;
    for (const TablePlan &table : tablePlans()) {
        if (table.columns.front().holds != Holds::Key)
            continue;
        const QString name = QString::fromLatin1(table.name).toLower();
        const QString key = QString::fromLatin1(table.columns.front().name).toLower();
        const QString counter =
            valueOf(connection, QStringLiteral("SELECT pg_get_serial_sequence('%1', '%2')").arg(name, key)).toString();
        if (counter.isEmpty())
            continue;
        const QString next = QStringLiteral("SELECT COALESCE(MAX(%1), 0) + 1 AS next FROM %2").arg(key, name);
        const QVariant late =
            valueOf(connection, QStringLiteral("SELECT m.next FROM (%1) m, %2 c WHERE m.next > "
                                               "CASE WHEN c.is_called THEN c.last_value + 1 ELSE c.last_value END")
                                    .arg(next, counter));
        if (late.isValid())
            statements << QStringLiteral("SELECT setval('%1', %2, false)").arg(counter, late.toString());
    }
    return statements;
}

void continueKeys(ado::Connection &connection)
{
    const QStringList statements = lateKeyStatements(connection);
    for (const QString &statement : statements)
        run(connection, statement);
}

bool hasSchema(ado::Connection &connection)
{
    const QStringList statements = probes();
    return std::ranges::all_of(statements,
                               [&](const QString &probe) { return QSqlQuery(connection.database()).exec(probe); });
}

} // namespace schema
