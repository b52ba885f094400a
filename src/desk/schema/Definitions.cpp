#include "desk/schema/Definitions.h"

#include "desk/schema/Statements.h"
#include "desk/schema/Tables.h"

#include <QRegularExpression>

namespace schema {

namespace {

QHash<QString, QString> byName(ado::Connection &connection, const QString &statement)
{
    QHash<QString, QString> definitions;
    const QList<QVariantList> rows = rowsOf(connection, statement);
    for (const QVariantList &row : rows)
        definitions.insert(row.value(0).toString().toLower(), row.value(1).toString());
    return definitions;
}

} // namespace

QString plainDefinition(const QString &statement)
{
    // A server names the schema, the method and the types of what stands beside a sign.
    static const QRegularExpression added(QStringLiteral("(?<=\\bon )\\w+\\.|\\busing btree\\b|::\\w+|[\\s()\"]+"));
    return statement.toLower().remove(added);
}

QHash<QString, QString> indexDefinitions(ado::Connection &connection)
{
    QString statement = QStringLiteral("SELECT name, sql FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL");
    if (connection.engine() == ado::Engine::MariaDB) {
        statement = QStringLiteral("SELECT index_name, CONCAT('create index ', index_name, ' on ', table_name, "
                                   "GROUP_CONCAT(column_name ORDER BY seq_in_index SEPARATOR ', ')) FROM "
                                   "information_schema.statistics WHERE table_schema = DATABASE() AND index_name <> "
                                   "'PRIMARY' GROUP BY table_name, index_name");
    } else if (connection.engine() != ado::Engine::SQLite) {
        QStringList tables{QStringLiteral("to_regclass('t_deskjournal')")};
        for (const TablePlan &table : tablePlans())
            tables << QStringLiteral("to_regclass('%1')").arg(QString::fromLatin1(table.name).toLower());
        statement = QStringLiteral("SELECT c.relname, pg_get_indexdef(c.oid) FROM pg_index x JOIN pg_class c ON c.oid "
                                   "= x.indexrelid WHERE x.indisvalid AND x.indrelid IN (%1)")
                        .arg(tables.join(u','));
    }
    QHash<QString, QString> definitions = byName(connection, statement);
    for (QString &definition : definitions)
        definition = plainDefinition(definition);
    return definitions;
}

QHash<QString, QString> tableStatementsAsKept(ado::Connection &connection)
{
    return byName(connection, QStringLiteral("SELECT name, sql FROM sqlite_master WHERE type = 'table'"));
}

QHash<QString, QString> triggerDefinitions(ado::Connection &connection)
{
    QHash<QString, QString> definitions =
        byName(connection,
               connection.engine() == ado::Engine::SQLite
                   ? QStringLiteral("SELECT tbl_name || ' ' || name, sql FROM sqlite_master WHERE type = 'trigger'")
                   : QStringLiteral("SELECT c.relname || ' ' || t.tgname, pg_get_triggerdef(t.oid) FROM pg_trigger t "
                                    "JOIN pg_class c ON c.oid = t.tgrelid WHERE NOT t.tgisinternal AND t.tgenabled <> "
                                    "'D' AND pg_table_is_visible(c.oid)"));
    for (QString &definition : definitions)
        definition = plainDefinition(definition);
    return definitions;
}

QHash<QString, QString> journalDefinitions(ado::Connection &connection)
{
    return byName(connection, QStringLiteral("SELECT p.proname::text, p.prosrc FROM pg_proc p JOIN pg_namespace n ON "
                                             "n.oid = p.pronamespace WHERE n.nspname = 'clinic_journal'"));
}

QHash<QString, QString> likeDefinitions(ado::Connection &connection)
{
    return byName(connection,
                  QStringLiteral("SELECT p.proname::text, p.prosrc FROM pg_proc p JOIN pg_namespace n ON n.oid = "
                                 "p.pronamespace WHERE n.nspname = 'clinic_like' UNION ALL SELECT o.oprname::text, '' "
                                 "FROM pg_operator o JOIN pg_namespace n ON n.oid = o.oprnamespace WHERE n.nspname = "
                                 "'clinic_like'"));
}

} // namespace schema
