#include "clinic/Catalogue.h"

#include <algorithm>

namespace clinic {

namespace {

// The columns of both readings: table, is it a view, does it take writes, does something stand in its place, is it found
// without quotes, column, type, required, filled, is the database open to writes.
enum At { TableAt, ViewAt, WritesAt, InterceptedAt, ReachableAt, ColumnAt, TypeAt, RequiredAt, FilledAt, OpenAt };

// Only a whole-number key that is the row's own number counts by itself; a view takes what its triggers take.
const QString ofAFile = QStringLiteral(R"sql(
SELECT m.name, m.type = 'view',
    m.type = 'table' OR EXISTS (SELECT 1 FROM sqlite_master t WHERE t.type = 'trigger' AND lower(t.tbl_name) = lower(m.name)
        AND instr(upper(t.sql), 'INSTEAD OF') > 0),
    m.type = 'view', 1, c.name, c.type, c."notnull",
    c.dflt_value IS NOT NULL OR (c.pk = 1 AND upper(c.type) = 'INTEGER' AND instr(upper(m.sql), 'WITHOUT ROWID') = 0
        AND (SELECT MAX(k.pk) FROM pragma_table_info(m.name) k) = 1),
    (SELECT query_only = 0 FROM pragma_query_only)
FROM sqlite_master m JOIN pragma_table_info(m.name) c
WHERE m.type IN ('table', 'view') AND lower(m.name) IN (%1)
ORDER BY m.name, c.cid)sql");

// A name in capitals was made in quotes and is found in quotes only. 28: UPDATE, INSERT and DELETE; a rule in a view's place
// answers none of them with rows. 64: a trigger in a view's place; 7: one before each inserted row, which may fill what
// nobody gives.
const QString ofAServer = QStringLiteral(R"sql(
SELECT c.relname::text, (c.relkind IN ('v', 'm'))::int,
    (pg_catalog.pg_relation_is_updatable(c.oid, true) & 28 = 28 AND NOT EXISTS (SELECT FROM pg_catalog.pg_rewrite r
        WHERE c.relkind = 'v' AND r.ev_class = c.oid AND r.ev_type <> '1'))::int,
    (c.relkind = 'v' AND EXISTS (SELECT FROM pg_catalog.pg_trigger t WHERE t.tgrelid = c.oid AND t.tgtype & 64 = 64))::int,
    (c.relname = lower(c.relname))::int, a.attname::text,
    pg_catalog.format_type(COALESCE(NULLIF(y.typbasetype, 0), a.atttypid),
        CASE WHEN y.typbasetype <> 0 THEN y.typtypmod ELSE a.atttypmod END),
    a.attnotnull::int,
    (a.atthasdef OR a.attidentity <> '' OR EXISTS (SELECT FROM pg_catalog.pg_trigger t WHERE t.tgrelid = c.oid
        AND NOT t.tgisinternal AND t.tgtype & 7 = 7))::int,
    (current_setting('default_transaction_read_only') = 'off' AND NOT pg_catalog.pg_is_in_recovery())::int
FROM pg_catalog.pg_class c JOIN pg_catalog.pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0 AND NOT a.attisdropped
    JOIN pg_catalog.pg_type y ON y.oid = a.atttypid
WHERE lower(c.relname) IN (%1) AND c.relkind IN ('r', 'p', 'v', 'm', 'f')
    AND (pg_catalog.pg_table_is_visible(c.oid) OR c.relname <> lower(c.relname))
ORDER BY c.relname, a.attnum)sql");

// What compares or keeps otherwise than the system's statements expect stands behind the type.
const QString ofMariaDb = QStringLiteral(R"sql(
SELECT t.table_name, t.table_type <> 'BASE TABLE',
    CASE WHEN t.table_type <> 'BASE TABLE' THEN COALESCE((SELECT v.is_updatable = 'YES' FROM information_schema.views v
        WHERE v.table_schema = t.table_schema AND v.table_name = t.table_name), 0) ELSE 1 END,
    0, 1, c.column_name, CONCAT(c.column_type, COALESCE(CONCAT(' ', c.collation_name), ''),
        CASE WHEN t.table_type = 'BASE TABLE' AND t.engine <> 'InnoDB' THEN CONCAT(' engine ', t.engine) ELSE '' END),
    c.is_nullable = 'NO', c.column_default IS NOT NULL AND c.column_default <> 'NULL' OR c.extra LIKE '%auto_increment%',
    @@read_only = 0
FROM information_schema.tables t JOIN information_schema.columns c ON c.table_schema = t.table_schema
    AND c.table_name = t.table_name
WHERE t.table_schema = DATABASE() AND t.table_name IN (%1)
ORDER BY t.table_name, c.ordinal_position)sql");

const QString &questionOf(ado::Engine engine)
{
    switch (engine) {
    case ado::Engine::SQLite:
        return ofAFile;
    case ado::Engine::PostgreSQL:
    case ado::Engine::Odbc:
        return ofAServer;
    case ado::Engine::MariaDB:
        return ofMariaDb;
    }
    Q_UNREACHABLE();
}

QString questionOf(const ado::Connection &connection, const QStringList &tables)
{
    QStringList names;
    for (const QString &table : tables)
        names << u'\'' + table.toLower() + u'\'';
    return QString(questionOf(connection.engine())).replace(QStringLiteral("%1"), names.join(u','));
}

} // namespace

const FoundColumn *FoundTable::column(const QString &name) const
{
    const auto found = std::ranges::find_if(
        columns, [&](const FoundColumn &one) { return one.name.compare(name, Qt::CaseInsensitive) == 0; });
    return found == columns.end() ? nullptr : &*found;
}

const FoundTable *Catalogue::table(const QString &name) const
{
    const auto found = tables.find(name.toLower());
    return found == tables.end() ? nullptr : &*found;
}

void foreseeCatalogue(ado::Foresight &next, const ado::Connection &connection, const QStringList &tables)
{
    next.read(questionOf(connection, tables));
}

Catalogue readCatalogue(const ado::Connection &connection, const QStringList &tables)
{
    const ado::CellTable rows = connection.read(questionOf(connection, tables));
    Catalogue catalogue;
    for (int row = 0; row < rows.rowCount(); ++row) {
        const auto text = [&](At field) { return rows.raw(row, field).toString(); };
        const auto isSet = [&](At field) { return rows.raw(row, field).toInt() != 0; };
        catalogue.takesWrites = isSet(OpenAt);
        if (!isSet(ReachableAt)) {
            if (!catalogue.outOfReach.contains(text(TableAt)))
                catalogue.outOfReach << text(TableAt);
            continue;
        }
        FoundTable &table = catalogue.tables[text(TableAt).toLower()];
        table.isView = isSet(ViewAt);
        table.takesWrites = isSet(WritesAt);
        table.intercepted = isSet(InterceptedAt);
        table.columns.push_back({text(ColumnAt), text(TypeAt), isSet(RequiredAt), isSet(FilledAt)});
    }
    return catalogue;
}

} // namespace clinic
