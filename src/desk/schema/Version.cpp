#include "desk/schema/Version.h"

#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "desk/schema/Tables.h"
#include "platform/ado/Foresight.h"
#include "platform/ado/ShownAddress.h"

namespace schema {

namespace {

QString reachStatement(const ado::Connection &connection)
{
    switch (dialectOf(connection)) {
    case Dialect::SQLite:
        return QStringLiteral("SELECT COUNT(*) * 2 FROM sqlite_master WHERE type = 'table' AND name = 't_DeskSchema'");
    case Dialect::PostgreSQL:
        return QStringLiteral("SELECT CASE WHEN to_regclass('t_deskschema') IS NULL THEN 0 WHEN "
                              "has_table_privilege(to_regclass('t_deskschema'), 'SELECT') THEN 2 ELSE 1 END");
    case Dialect::MariaDB: // a role sees no table there that it may not read
        return QStringLiteral("SELECT COUNT(*) * 2 FROM information_schema.tables WHERE table_schema = DATABASE() AND "
                              "table_name = 't_deskschema'");
    }
    Q_UNREACHABLE();
}

} // namespace

void foreseeMark(ado::Foresight &next, const ado::Connection &connection)
{
    next.read(reachStatement(connection)).read(selectMarkStatement());
}

std::optional<Mark> readMark(ado::Connection &connection)
{
    enum Reach { NotThere, NotToBeRead, ToBeRead };
    ado::Foresight next(connection.shared_from_this());
    foreseeMark(next, connection);
    switch (valueOf(connection, reachStatement(connection)).toInt()) {
    case NotThere:
        return Mark{};
    case NotToBeRead:
        return std::nullopt;
    default:
        break;
    }
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

std::optional<Mark> demandNoNewer(ado::Connection &connection)
{
    const std::optional<Mark> mark = readMark(connection);
    if (mark)
        demandNoNewer(mark->version, ado::addressToShow(connection.address()));
    return mark;
}

QString upgradeNotice(const std::optional<Mark> &mark)
{
    if (!mark || mark->version >= CurrentVersion)
        return {};
    return QStringLiteral(
        "이전 판에서 만든 데이터베이스입니다. 그대로 사용할 수 있습니다. 한가할 때 desk --upgrade를 실행하십시오.");
}

QStringList markStatements(Dialect dialect)
{
    QStringList statements{
        QStringLiteral("CREATE TABLE IF NOT EXISTS t_DeskSchema (\n"
                       "    DS_Key integer PRIMARY KEY CHECK (DS_Key = 1),\n"
                       "    DS_Version integer NOT NULL,\n"
                       "    DS_Generation integer NOT NULL\n"
                       ")"),
        QStringLiteral("INSERT INTO t_DeskSchema VALUES (1, %1, 0) ").arg(CurrentVersion)
            + (dialect == Dialect::MariaDB
                   ? QStringLiteral("ON DUPLICATE KEY UPDATE DS_Version = VALUES(DS_Version)")
                   : QStringLiteral("ON CONFLICT (DS_Key) DO UPDATE SET DS_Version = excluded.DS_Version"))};
    if (dialect == Dialect::PostgreSQL) // every desk asks for it, whatever its role
        statements << QStringLiteral("GRANT SELECT ON t_DeskSchema TO PUBLIC");
    return statements;
}

QString selectMarkStatement()
{
    return QStringLiteral("SELECT DS_Version, DS_Generation FROM t_DeskSchema");
}

} // namespace schema
