#include "host/schema/Schema.h"

#include "host/schema/Tables.h"
#include "platform/runtime/RuntimeError.h"

#include <QSqlError>
#include <QSqlQuery>

namespace schema {

namespace {

[[noreturn]] void refuse(const QString &what)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::Database, what);
}

void run(const QSqlDatabase &database, const QString &statement)
{
    QSqlQuery query(database);
    if (!query.exec(statement))
        refuse(QStringLiteral("데이터베이스를 준비하지 못했습니다.\n") + query.lastError().text());
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

/// All statements or none.
void runTogether(ado::Connection &connection, const QStringList &statements)
{
    QSqlDatabase database = connection.database();
    if (!database.transaction())
        refuse(QStringLiteral("데이터베이스를 준비하지 못했습니다.\n") + database.lastError().text());
    try {
        for (const QString &statement : statements)
            run(database, statement);
    } catch (...) {
        database.rollback();
        throw;
    }
    if (!database.commit()) {
        const QString reason = database.lastError().text();
        database.rollback();
        refuse(QStringLiteral("데이터베이스를 준비하지 못했습니다.\n") + reason);
    }
}

QStringList tableStatements(Dialect dialect)
{
    QStringList statements = dialect == Dialect::PostgreSQL ? postgresLikeStatements() : QStringList();
    for (const TablePlan &table : tablePlans())
        statements << createTableStatement(table, dialect);
    return statements;
}

QStringList indexStatements()
{
    QStringList statements;
    for (const IndexPlan &index : indexPlans())
        statements << createIndexStatement(index);
    return statements;
}

} // namespace

void createSchema(ado::Connection &connection)
{
    runTogether(connection, tableStatements(dialectOf(connection)) + indexStatements());
}

void createTables(ado::Connection &connection)
{
    runTogether(connection, tableStatements(dialectOf(connection)));
}

void createIndexes(ado::Connection &connection)
{
    runTogether(connection, indexStatements());
}

bool hasSchema(ado::Connection &connection)
{
    for (const TablePlan &table : tablePlans()) {
        QStringList names;
        for (const ColumnPlan &column : table.columns)
            names << QString::fromLatin1(column.name);
        QSqlQuery query(connection.database());
        if (!query.exec(QStringLiteral("SELECT %1 FROM %2 WHERE 1 = 0")
                            .arg(names.join(QStringLiteral(", ")), QString::fromLatin1(table.name))))
            return false;
    }
    return true;
}

} // namespace schema
