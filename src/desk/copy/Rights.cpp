#include "desk/copy/Rights.h"

#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"

namespace copy {

namespace {

/// Grantee and statement of each right; %1 are the tables' names.
const QString given = QStringLiteral(R"sql(
WITH asked AS (SELECT c.oid, c.relname, c.relacl, c.relowner, c.relnamespace FROM unnest(ARRAY[%1]) AS named
               JOIN pg_class c ON c.oid = to_regclass(named)),
all_rights AS (
    SELECT r.grantee, r.privilege_type || ' ON ' || quote_ident(t.relname) AS what, t.relowner AS owner
        FROM asked t, aclexplode(t.relacl) r
    UNION ALL
    SELECT r.grantee, r.privilege_type || ' (' || quote_ident(a.attname) || ') ON ' || quote_ident(t.relname), t.relowner
        FROM asked t JOIN pg_attribute a ON a.attrelid = t.oid AND NOT a.attisdropped, aclexplode(a.attacl) r
    UNION ALL
    SELECT r.grantee, r.privilege_type || ' ON SCHEMA ' || quote_ident(n.nspname), n.nspowner
        FROM pg_namespace n, aclexplode(n.nspacl) r WHERE n.nspname IN ('clinic_like', 'clinic_journal')
    UNION ALL
    SELECT r.grantee, r.privilege_type || ' ON FUNCTION ' || p.oid::regprocedure::text, p.proowner
        FROM pg_proc p JOIN pg_namespace n ON n.oid = p.pronamespace, aclexplode(p.proacl) r
        WHERE n.nspname IN ('clinic_like', 'clinic_journal'))
SELECT DISTINCT g.rolname::text, 'GRANT ' || a.what || ' TO ' || quote_ident(g.rolname)
    FROM all_rights a JOIN pg_roles g ON g.oid = a.grantee WHERE a.grantee <> a.owner ORDER BY 2)sql");

} // namespace

QStringList rightsFor(ado::Connection &source, ado::Connection &target, const QStringList &tables)
{
    for (const ado::Connection *connection : {&source, &target}) {
        if (schema::dialectOf(*connection) != schema::Dialect::PostgreSQL)
            return {};
    }
    QStringList roles, statements;
    const QList<QVariantList> known = schema::rowsOf(target, QStringLiteral("SELECT rolname::text FROM pg_roles"));
    for (const QVariantList &role : known)
        roles << role[0].toString();
    const QList<QVariantList> rights = schema::rowsOf(
        source, QString(given).replace(QStringLiteral("%1"), u'\'' + tables.join(QStringLiteral("', '")) + u'\''));
    for (const QVariantList &right : rights) {
        if (roles.contains(right[0].toString()))
            statements << right[1].toString();
    }
    return statements;
}

} // namespace copy
