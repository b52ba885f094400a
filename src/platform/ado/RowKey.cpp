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

constexpr QStringView ofMariaDb =
    u"SELECT c.column_name, c.column_type FROM information_schema.statistics s JOIN information_schema.columns c ON "
    u"c.table_schema = s.table_schema AND c.table_name = s.table_name AND c.column_name = s.column_name WHERE "
    u"s.table_schema = DATABASE() AND s.table_name = '%1' AND s.non_unique = 0 AND c.is_nullable = 'NO' AND NOT EXISTS "
    u"(SELECT 1 FROM information_schema.statistics o WHERE o.table_schema = s.table_schema AND o.table_name = "
    u"s.table_name AND o.index_name = s.index_name AND o.seq_in_index > 1) ORDER BY s.index_name <> 'PRIMARY', "
    u"s.index_name";

QStringView questionOf(Dialect dialect)
{
    switch (dialect) {
    case Dialect::SQLite:
        return ofAFile;
    case Dialect::PostgreSQL:
        return ofAServer;
    case Dialect::MariaDB:
        return ofMariaDb;
    }
    Q_UNREACHABLE();
}

} // namespace

Command candidatesForKey(Command command, const Table &table, Dialect dialect)
{
    command << questionOf(dialect).toString().replace(QStringLiteral("%1"), table.name.toLower());
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
