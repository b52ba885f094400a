#include "platform/ado/RowKey.h"

#include "platform/ado/CellTable.h"

namespace ado {

namespace {

// A key that is no row number of the engine's own and may be missing is none.
constexpr QStringView ofAFile =
    u"SELECT c.name, c.type FROM pragma_table_info('%1') c WHERE (c.pk = 1 AND (c.\"notnull\" = 1 OR upper(c.type) = "
    u"'INTEGER') AND (SELECT MAX(k.pk) FROM pragma_table_info('%1') k) = 1) OR (c.\"notnull\" = 1 AND EXISTS (SELECT 1 "
    u"FROM pragma_index_list('%1') l WHERE l.\"unique\" = 1 AND l.partial = 0 AND (SELECT group_concat(i.name) FROM "
    u"pragma_index_info(l.name) i) = c.name)) ORDER BY c.pk DESC, c.cid";

constexpr QStringView ofAServer =
    u"SELECT a.attname::text, t.typname::text FROM pg_catalog.pg_index i JOIN pg_catalog.pg_attribute a ON a.attrelid "
    u"= "
    u"i.indrelid AND a.attnum = i.indkey[0] JOIN pg_catalog.pg_type t ON t.oid = a.atttypid WHERE i.indrelid = "
    u"to_regclass('%1') AND i.indisunique AND i.indisvalid AND i.indpred IS NULL AND i.indnkeyatts = 1 AND "
    u"a.attnotnull "
    u"ORDER BY i.indisprimary DESC, i.indexrelid";

} // namespace

Command candidatesForKey(Command command, const Table &table, Dialect dialect)
{
    command << (dialect == Dialect::SQLite ? ofAFile : ofAServer).toString().replace(QStringLiteral("%1"), table.name);
    return command;
}

RowKey keyAmong(const CellTable &candidates, const Table &table)
{
    for (int row = 0; row < candidates.rowCount(); ++row) {
        const QString name = candidates.raw(row, 0).toString();
        const QString type = candidates.raw(row, 1).toString();
        if (const Column *const known = table.column(name))
            return {known->name, known->name};
        if (type.contains(QLatin1String("int"), Qt::CaseInsensitive))
            return {name, u'"' + QString(name).replace(u'"', QStringLiteral("\"\"")) + u'"'};
    }
    return {};
}

} // namespace ado
