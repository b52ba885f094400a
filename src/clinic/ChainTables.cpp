#include "clinic/ChainTables.h"

#include <algorithm>

namespace clinic {

namespace {

constexpr int listLength = 36; ///< of a list's name; behind it a '/' and which counting this is

QStringList chainColumnNames(const QString &before)
{
    QStringList names;
    for (const Column &column : chainColumns())
        names << before + QString::fromLatin1(column.name);
    return names;
}

/// Revisions follow one another as their transactions are saved, since each holds the list's row till then: who has seen
/// one has seen all below it.
QString noteFunction()
{
    return QStringLiteral(R"sql(
CREATE OR REPLACE FUNCTION clinic_central.note() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER
SET search_path = pg_catalog, pg_temp AS $body$
DECLARE
    touched integer[];
    revision bigint;
BEGIN
    IF TG_OP = 'INSERT' THEN
        SELECT array_agg(PM_PK) INTO touched FROM fresh;
    ELSIF TG_OP = 'DELETE' THEN
        SELECT array_agg(PM_PK) INTO touched FROM stale;
    ELSE
        SELECT array_agg(coalesce(a.PM_PK, b.PM_PK)) INTO touched FROM fresh a FULL JOIN stale b ON a.PM_PK = b.PM_PK
        WHERE a.PM_PK IS NULL OR b.PM_PK IS NULL OR ROW(%1) IS DISTINCT FROM ROW(%2);
    END IF;
    IF touched IS NULL THEN
        RETURN NULL;
    END IF;
    EXECUTE format('UPDATE %I.t_CentralList SET CL_Revision = CL_Revision + 1 RETURNING CL_Revision', TG_TABLE_SCHEMA)
        INTO revision;
    EXECUTE format('INSERT INTO %I.t_CentralProduct SELECT key, $2 FROM unnest($1) AS key ON CONFLICT (CP_Product) '
                   'DO UPDATE SET CP_Revision = excluded.CP_Revision', TG_TABLE_SCHEMA) USING touched, revision;
    RETURN NULL;
END
$body$)sql")
        .arg(chainColumnNames(QStringLiteral("a.")).join(QStringLiteral(", ")),
             chainColumnNames(QStringLiteral("b.")).join(QStringLiteral(", ")));
}

const QString grantLinks = QStringLiteral(R"sql(
DO $body$
DECLARE
    role text;
BEGIN
    FOR role IN SELECT DISTINCT CASE WHEN a.grantee = 0 THEN 'PUBLIC' ELSE quote_ident(pg_get_userbyid(a.grantee)) END
        FROM pg_class c, aclexplode(c.relacl) a
        WHERE c.oid = to_regclass('tpsproductmaster') AND a.privilege_type = 'DELETE' LOOP
        EXECUTE 'GRANT SELECT, INSERT, UPDATE, DELETE ON t_CentralState, t_CentralLink TO ' || role;
    END LOOP;
END
$body$)sql");

struct Event
{
    const char *name;
    const char *row;       ///< whose key is noted by the embedded engine
    const char *reference; ///< what a server lays before the function
};

constexpr Event events[]{{"INSERT", "NEW", "NEW TABLE AS fresh"},
                         {"UPDATE", "NEW", "OLD TABLE AS stale NEW TABLE AS fresh"},
                         {"DELETE", "OLD", "OLD TABLE AS stale"}};

QString serverTrigger(const Event &event)
{
    const QString name = QString::fromLatin1(event.name);
    return QStringLiteral("CREATE TRIGGER central_%1 AFTER %2 ON tPSProductMaster REFERENCING %3 FOR EACH STATEMENT "
                          "EXECUTE FUNCTION clinic_central.note()")
        .arg(name.toLower(), name, QString::fromLatin1(event.reference));
}

QString embeddedTrigger(const Event &event)
{
    const QString name = QString::fromLatin1(event.name);
    QStringList changes;
    for (const QString &column : chainColumnNames({}))
        changes << QStringLiteral("OLD.%1 IS NOT NEW.%1").arg(column);
    const QString when =
        name == QLatin1String("UPDATE") ? QStringLiteral(" WHEN ") + changes.join(QStringLiteral(" OR ")) : QString();
    return QStringLiteral(R"sql(CREATE TRIGGER central_%1 AFTER %2 ON tPSProductMaster%3
BEGIN
    UPDATE t_CentralList SET CL_Revision = CL_Revision + 1;
    INSERT INTO t_CentralProduct SELECT %4.PM_PK, CL_Revision FROM t_CentralList WHERE true
        ON CONFLICT (CP_Product) DO UPDATE SET CP_Revision = excluded.CP_Revision;
END)sql")
        .arg(name.toLower(), name, when, QString::fromLatin1(event.row));
}

} // namespace

std::span<const Column> chainColumns()
{
    static const std::vector<Column> columns = [] {
        const auto product = std::ranges::find_if(
            tables(), [](const Table &table) { return qstrcmp(table.name, "tPSProductMaster") == 0; });
        std::vector<Column> decided;
        for (const Column &column : product->columns) {
            if (column.holds != ado::ColumnType::Key && qstrcmp(column.name, "PM_IsHide") != 0)
                decided.push_back(column);
        }
        return decided;
    }();
    return columns;
}

QString chainColumnList(const QString &table)
{
    return chainColumnNames(table + u'.').join(QStringLiteral(", "));
}

QStringList chainListStatements(const QString &schema, const QString &list)
{
    const QString created = QStringLiteral("CREATE TABLE ") + schema;
    return {created
                + QStringLiteral("t_CentralList (CL_Key integer PRIMARY KEY CHECK (CL_Key = 1), CL_List text NOT NULL, "
                                 "CL_Revision bigint NOT NULL)"),
            created + QStringLiteral("t_CentralProduct (CP_Product integer PRIMARY KEY, CP_Revision bigint NOT NULL)"),
            QStringLiteral("CREATE INDEX ixCentralRevision ON %1t_CentralProduct (CP_Revision)").arg(schema),
            QStringLiteral("INSERT INTO %1t_CentralList VALUES (1, '%2', 1)").arg(schema, list),
            QStringLiteral("INSERT INTO %1t_CentralProduct SELECT PM_PK, 1 FROM tPSProductMaster").arg(schema)};
}

QString chainCountAnewStatement(bool server)
{
    return QStringLiteral("UPDATE t_CentralList SET CL_List = substr(CL_List, 1, %1) || '/' || %2")
        .arg(QString::number(listLength),
             server ? QStringLiteral("md5(random()::text)") : QStringLiteral("hex(randomblob(16))"));
}

bool isSameChainList(const QString &one, const QString &other)
{
    return one.left(listLength) == other.left(listLength);
}

QStringList chainFunctionStatements()
{
    return {QStringLiteral("CREATE SCHEMA IF NOT EXISTS clinic_central"), noteFunction()};
}

QStringList chainTriggers(bool server)
{
    QStringList statements;
    for (const Event &event : events)
        statements << (server ? serverTrigger(event) : embeddedTrigger(event));
    return statements;
}

QStringList chainLinkStatements(bool server)
{
    // Beside its two keys a note holds what was written to the product, in the types of the clinic's own table.
    QStringList statements{
        QStringLiteral("CREATE TABLE t_CentralState (CS_Key integer PRIMARY KEY CHECK (CS_Key = 1), CS_List text NOT "
                       "NULL, CS_Revision bigint NOT NULL)"),
        QStringLiteral("CREATE TABLE t_CentralLink AS SELECT p.PM_PK AS CK_Product, p.PM_PK AS CK_Central, %1 FROM "
                       "tPSProductMaster p WHERE 1 = 0")
            .arg(chainColumnList(QStringLiteral("p"))),
        QStringLiteral("CREATE UNIQUE INDEX ixCentralLink ON t_CentralLink (CK_Product)"),
        QStringLiteral("CREATE UNIQUE INDEX ixCentralKey ON t_CentralLink (CK_Central)"),
        QStringLiteral("INSERT INTO t_CentralState VALUES (1, '', 0)")};
    if (server)
        statements << grantLinks;
    return statements;
}

QString chainNoteDiffers()
{
    QStringList differences;
    for (const QString &column : chainColumnNames({}))
        differences << QStringLiteral("k.%1 IS DISTINCT FROM p.%1").arg(column);
    return differences.join(QStringLiteral(" OR "));
}

QString chainNoteSettings()
{
    QStringList settings;
    for (const QString &column : chainColumnNames({}))
        settings << QStringLiteral("%1 = p.%1").arg(column);
    return settings.join(QStringLiteral(", "));
}

} // namespace clinic
