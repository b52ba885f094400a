#include "desk/schema/Schema.h"

#include "desk/schema/Journal.h"
#include "desk/schema/Statements.h"
#include "desk/schema/Tables.h"
#include "desk/schema/Version.h"
#include "platform/ado/PostgresSession.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/Attempt.h"

#include <algorithm>

namespace schema {

namespace {

QStringList tableStatements(Dialect dialect)
{
    QStringList statements;
    if (dialect == Dialect::PostgreSQL)
        statements = postgresLikeStatements() << ado::postgresSession::likeOperator;
    for (const TablePlan &table : tablePlans())
        statements << createTableStatement(table, dialect);
    return statements + markStatements(dialect);
}

/// Readings without rows that a database takes only when it holds every table and column, one a table.
QStringList probes()
{
    QStringList statements;
    for (const TablePlan &table : tablePlans()) {
        QStringList names;
        for (const ColumnPlan &column : table.columns) {
            if (!column.own)
                names << QString::fromLatin1(column.name);
        }
        statements << QStringLiteral("SELECT %1 FROM %2 WHERE 1 = 0")
                          .arg(names.join(QStringLiteral(", ")), QString::fromLatin1(table.name));
    }
    return statements;
}

} // namespace

Dialect dialectOf(const ado::Connection &connection)
{
    switch (connection.engine()) {
    case ado::Engine::SQLite:
        return Dialect::SQLite;
    case ado::Engine::PostgreSQL:
    case ado::Engine::Odbc:
        return Dialect::PostgreSQL;
    case ado::Engine::MariaDB:
        return Dialect::MariaDB;
    }
    Q_UNREACHABLE();
}

NewTables::NewTables(ado::Connection &connection)
    : connection_(connection)
    , before_(dialectOf(connection) == Dialect::MariaDB ? allTables(connection) : QStringList())
{
}

NewTables::~NewTables()
{
    if (kept_ || dialectOf(connection_) != Dialect::MariaDB)
        return;
    runtime::Attempt undo; // why they are not wanted is the error that tells something
    undo([&] {
        for (const QString &table : allTables(connection_)) {
            if (!before_.contains(table))
                connection_.Execute(QStringLiteral("DROP TABLE ") + table);
        }
    });
}

void createSchema(ado::Connection &connection)
{
    NewTables made(connection);
    ado::Transaction scope(connection);
    createTables(connection);
    createIndexes(connection);
    createJournal(connection);
    scope.commit();
    made.keep();
}

void createTables(ado::Connection &connection)
{
    for (const QString &statement : tableStatements(dialectOf(connection)))
        run(connection, statement);
}

void createIndexes(ado::Connection &connection)
{
    const Dialect dialect = dialectOf(connection);
    if (dialect == Dialect::MariaDB)
        return;
    for (const IndexPlan &index : indexPlans())
        run(connection, createIndexStatement(index, dialect));
}

void createJournal(ado::Connection &connection, const std::function<void()> &history)
{
    const Dialect dialect = dialectOf(connection);
    if (dialect == Dialect::MariaDB)
        return;
    for (const QString &statement : journalTableStatements(dialect))
        run(connection, statement);
    if (history)
        history();
    QStringList statements;
    if (dialect == Dialect::PostgreSQL)
        statements << journalFunctionStatements();
    for (const JournalTrigger &trigger : journalTriggers(dialect))
        statements << trigger.statement;
    for (const QString &statement : statements + journalBeginStatements(dialect))
        run(connection, statement);
}

bool hasJournal(ado::Connection &connection)
{
    if (dialectOf(connection) == Dialect::MariaDB)
        return false;
    const QString there = dialectOf(connection) == Dialect::PostgreSQL
                              ? QStringLiteral("SELECT COUNT(to_regclass('t_deskjournal'))")
                              : QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND "
                                               "name = 't_DeskJournal'");
    return valueOf(connection, there).toInt() > 0;
}

QStringList lateKeyStatements(ado::Connection &connection, const std::function<bool(const TablePlan &)> &asked)
{
    QStringList statements;
    // The embedded engine counts on from the highest by itself.
    if (dialectOf(connection) != Dialect::PostgreSQL)
        return statements;
    const clinic::Catalogue catalogue = foundTables(connection);
    for (const TablePlan &table : tablePlans()) {
        const clinic::FoundTable *const found = catalogue.table(QString::fromLatin1(table.name));
        if (table.key().holds != Holds::Key || (asked && !asked(table)) || !found || found->isView
            || !found->column(QString::fromLatin1(table.key().name)))
            continue;
        const QString name = QString::fromLatin1(table.name).toLower();
        const QString key = QString::fromLatin1(table.columns.front().name).toLower();
        const QString counter =
            valueOf(connection, QStringLiteral("SELECT pg_get_serial_sequence('%1', '%2')").arg(name, key)).toString();
        if (counter.isEmpty())
            continue;
        const QString next = QStringLiteral("SELECT COALESCE(MAX(%1), 0) + 1 AS next FROM %2").arg(key, name);
        const QVariant late =
            valueOf(connection, QStringLiteral("SELECT m.next FROM (%1) m, %2 c WHERE m.next > "
                                               "CASE WHEN c.is_called THEN c.last_value + 1 ELSE c.last_value END")
                                    .arg(next, counter));
        if (late.isValid())
            statements << QStringLiteral("SELECT setval('%1', %2, false)").arg(counter, late.toString());
    }
    return statements;
}

void continueKeys(ado::Connection &connection)
{
    const QStringList statements = lateKeyStatements(connection);
    for (const QString &statement : statements)
        run(connection, statement);
}

QStringList allTables(ado::Connection &connection)
{
    QStringList names;
    const QList<QVariantList> rows = rowsOf(
        connection,
        QStringLiteral("SELECT LOWER(table_name) FROM information_schema.tables WHERE table_schema = DATABASE()"));
    for (const QVariantList &row : rows)
        names << row.value(0).toString();
    return names;
}

clinic::Catalogue foundTables(const ado::Connection &connection)
{
    QStringList names;
    for (const TablePlan &table : tablePlans())
        names << QString::fromLatin1(table.name);
    return clinic::readCatalogue(connection, names);
}

bool hasSchema(ado::Connection &connection)
{
    const QStringList statements = probes();
    return std::ranges::all_of(statements, [&](const QString &probe) {
        runtime::Attempt attempt(runtime::Attempt::Failure::IsAnswer);
        attempt([&] { connection.read(probe); });
        return !attempt.failed();
    });
}

} // namespace schema
