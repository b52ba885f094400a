#include "desk/backup/PostgresScript.h"

#include "desk/schema/Tables.h"
#include "desk/schema/Version.h"

namespace backup {

namespace {

/// "('tpsordermaster', 'ordm_pk'), ..." of the tables whose keys the server gives.
QString keyColumns()
{
    QStringList rows;
    for (const schema::TablePlan &table : schema::tablePlans()) {
        if (table.columns.front().holds == schema::Holds::Key)
            rows << QStringLiteral("('%1', '%2')")
                        .arg(QString::fromLatin1(table.name).toLower(),
                             QString::fromLatin1(table.columns.front().name).toLower());
    }
    return rows.join(QStringLiteral(", "));
}

/// Gives no key that a row has.
QString countAbove()
{
    return QStringLiteral(R"sql(DO $body$
DECLARE
    t record;
    counter text;
    next bigint;
BEGIN
    FOR t IN SELECT * FROM (VALUES %1) AS v(name, key) LOOP
        CONTINUE WHEN NOT EXISTS (SELECT FROM pg_attribute WHERE attrelid = to_regclass(t.name) AND attname = t.key);
        counter := pg_get_serial_sequence(t.name, t.key);
        CONTINUE WHEN counter IS NULL;
        EXECUTE format('SELECT GREATEST((SELECT COALESCE(MAX(%I), 0) + 1 FROM %I), '
                       'last_value + CASE WHEN is_called THEN 1 ELSE 0 END) FROM %s', t.key, t.name, counter) INTO next;
        PERFORM setval(counter, next, false);
    END LOOP;
END
$body$)sql")
        .replace(QStringLiteral("%1"), keyColumns());
}

} // namespace

QString beforeFirstRestore()
{
    return schema::postgresLikeStatements().join(QStringLiteral(";\n"));
}

QString makeRoomIn(const QString &schema)
{
    return QStringLiteral("CREATE SCHEMA IF NOT EXISTS %1").arg(schema);
}

QString bringOutOf(const QString &schema)
{
    QStringList names{QStringLiteral("'t_deskschema'"), QStringLiteral("'t_deskjournal'")};
    for (const schema::TablePlan &table : schema::tablePlans())
        names << QStringLiteral("'%1'").arg(QString::fromLatin1(table.name).toLower());
    return QStringLiteral(R"sql(RESET search_path;
DO $body$
DECLARE
    place regnamespace := '%1'::regnamespace;
    t record;
BEGIN
    IF (SELECT nspname = ANY (current_schemas(false)) FROM pg_namespace WHERE oid = place) THEN
        RETURN;
    END IF;
    FOR t IN SELECT oid::regclass AS name FROM pg_class WHERE relnamespace = place AND relkind = 'r' AND relname IN (%2) LOOP
        EXECUTE format('ALTER TABLE %s SET SCHEMA %I', t.name, current_schema());
    END LOOP;
    IF NOT EXISTS (SELECT FROM pg_class WHERE relnamespace = place) THEN
        EXECUTE format('DROP SCHEMA %s', place);
    END IF;
END
$body$)sql")
        .arg(QString(schema).replace(u'\'', QStringLiteral("''")), names.join(QStringLiteral(", ")));
}

QString rowSumStatement(const QString &table)
{
    return QStringLiteral(
               "SELECT COUNT(*) || '-' || COALESCE(SUM(('x' || substr(md5(t::text), 1, 15))::bit(60)::bigint), "
               "0) FROM %1 t")
        .arg(table);
}

QString demandRows(const QStringList &rowSums)
{
    QString statements = QStringLiteral("RESET search_path;\nSET datestyle = 'ISO, YMD'");
    for (const QString &sum : rowSums)
        statements += QStringLiteral(";\nDO $body$ BEGIN IF (%1) <> '%2' THEN RAISE EXCEPTION '%3'; END IF; END $body$")
                          .arg(rowSumStatement(sum.section(u' ', 0, 0)), sum.section(u' ', 1),
                               QStringLiteral("백업한 뒤에 바뀌었거나 손상된 백업 파일입니다: ") + sum);
    return statements;
}

QString afterFirstRestore(int version)
{
    return QStringLiteral("RESET search_path;\n") + countAbove() + QStringLiteral(";\n")
           + schema::markStatements(schema::Dialect::PostgreSQL).join(QStringLiteral(";\n"))
           + QStringLiteral(";\nUPDATE t_DeskSchema SET DS_Version = %1, DS_Generation = DS_Generation + 1")
                 .arg(version);
}

} // namespace backup
