#include "desk/schema/Version.h"

#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "desk/schema/Tables.h"
#include "platform/ado/ShownAddress.h"

namespace schema {

std::optional<Mark> readMark(ado::Connection &connection)
{
    const bool server = dialectOf(connection) == Dialect::PostgreSQL;
    const QString there = server ? QStringLiteral("SELECT COUNT(to_regclass('t_deskschema'))")
                                 : QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND "
                                                  "name = 't_DeskSchema'");
    if (valueOf(connection, there).toInt() == 0)
        return Mark{};
    if (server
        && valueOf(connection, QStringLiteral("SELECT has_table_privilege('t_deskschema', 'SELECT')::int")).toInt()
               == 0)
        return std::nullopt;
    const QVariantList row = rowsOf(connection, selectMarkStatement()).value(0);
    return Mark{row.value(0).toInt(), row.value(1).toInt()};
}

void demandNoNewer(int version, const QString &where)
{
    if (version > CurrentVersion)
        refuse(
            QStringLiteral("더 새로운 데스크에서 사용하던 데이터베이스입니다. 바뀐 것은 없습니다. 데스크를 새 판으로 "
                           "바꾼 뒤 다시 시도하십시오. (데이터베이스 %1판, 이 데스크 %2판): %3")
                .arg(version)
                .arg(CurrentVersion)
                .arg(where));
}

void demandNoNewer(ado::Connection &connection)
{
    if (const std::optional<Mark> mark = readMark(connection))
        demandNoNewer(mark->version, ado::addressToShow(connection.address()));
}

QString upgradeNotice(ado::Connection &connection)
{
    const std::optional<Mark> mark = readMark(connection);
    if (!mark || mark->version >= CurrentVersion)
        return {};
    return QStringLiteral(
        "이전 판에서 만든 데이터베이스입니다. 그대로 사용할 수 있습니다. 한가할 때 desk --upgrade를 실행하십시오.");
}

QStringList markStatements(bool onServer)
{
    QStringList statements{
        QStringLiteral("CREATE TABLE IF NOT EXISTS t_DeskSchema (\n"
                       "    DS_Key integer PRIMARY KEY CHECK (DS_Key = 1),\n"
                       "    DS_Version integer NOT NULL,\n"
                       "    DS_Generation integer NOT NULL\n"
                       ")"),
        QStringLiteral("INSERT INTO t_DeskSchema VALUES (1, %1, 0) ON CONFLICT (DS_Key) DO UPDATE SET "
                       "DS_Version = excluded.DS_Version")
            .arg(CurrentVersion)};
    if (onServer) // every desk asks for it, whatever its role
        statements << QStringLiteral("GRANT SELECT ON t_DeskSchema TO PUBLIC");
    return statements;
}

QString selectMarkStatement()
{
    return QStringLiteral("SELECT DS_Version, DS_Generation FROM t_DeskSchema");
}

} // namespace schema
