#include "desk/schema/Statements.h"

#include "platform/runtime/RuntimeError.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace schema {

void refuse(const QString &what)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::Database, what);
}

namespace {

QSqlQuery done(ado::Connection &connection, const QString &statement)
{
    QSqlQuery query(connection.database());
    query.setForwardOnly(true);
    if (query.exec(statement))
        return query;
    const bool held = query.lastError().nativeErrorCode() == QLatin1String("55P03") // the server waited long enough
                      || query.lastError().nativeErrorCode() == QLatin1String("5"); // so did the embedded engine
    refuse((held ? QStringLiteral("데스크가 데이터베이스를 사용 중입니다. 데스크를 모두 닫고 다시 시도하십시오.\n")
                 : QStringLiteral("데이터베이스를 준비하지 못했습니다.\n"))
           + query.lastError().text());
}

} // namespace

void run(ado::Connection &connection, const QString &statement)
{
    done(connection, statement);
}

QList<QVariantList> rowsOf(ado::Connection &connection, const QString &statement)
{
    QSqlQuery query = done(connection, statement);
    QList<QVariantList> rows;
    while (query.next()) {
        QVariantList row;
        for (int column = 0; column < query.record().count(); ++column)
            row << query.value(column);
        rows << row;
    }
    return rows;
}

QVariant valueOf(ado::Connection &connection, const QString &statement)
{
    return rowsOf(connection, statement).value(0).value(0);
}

} // namespace schema
