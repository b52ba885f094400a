#include "desk/schema/Schema.h"

#include "desk/schema/Tables.h"
#include "platform/runtime/RuntimeError.h"

#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>

namespace schema {

namespace {

const QString CannotPrepare = QStringLiteral("데이터베이스를 준비하지 못했습니다.\n");

[[noreturn]] void refuse(const QString &what)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::Database, what);
}

void run(const QSqlDatabase &database, const QString &statement)
{
    QSqlQuery query(database);
    if (!query.exec(statement))
        refuse(CannotPrepare + query.lastError().text());
}

Dialect dialectOf(ado::Connection &connection)
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
    refuse(QStringLiteral("이 데이터베이스 서버의 테이블은 서버의 설치 프로그램으로 만들어야 합니다."));
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
    for (const QString &statement : tableStatements(dialectOf(connection)))
        run(connection.database(), statement);
}

void createIndexes(ado::Connection &connection)
{
    for (const IndexPlan &index : indexPlans())
        run(connection.database(), createIndexStatement(index));
}

void continueKeys(ado::Connection &connection)
{
    // The embedded engine does so by itself.
    if (dialectOf(connection) == Dialect::SQLite)
        return;
    for (const TablePlan &table : tablePlans()) {
        for (const ColumnPlan &column : table.columns) {
            if (column.holds == Holds::Key)
                run(connection.database(), continueKeyStatement(table, column));
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
    return std::ranges::all_of(statements,
                               [&](const QString &probe) { return QSqlQuery(connection.database()).exec(probe); });
}

} // namespace schema
