#include "desk/backup/SqliteRows.h"

#include "desk/backup/ReadyTable.h"
#include "desk/journal/Seal.h"
#include "desk/schema/Statements.h"
#include "platform/ado/Transaction.h"

#include <sqlite3.h>

namespace backup {

namespace {

constexpr int WaitForDesks = 15'000; // milliseconds

QStringList columnsOf(ado::Connection &connection, const QString &table, const QString &database)
{
    QStringList names;
    const QList<QVariantList> rows = schema::rowsOf(
        connection,
        QStringLiteral("SELECT name FROM pragma_table_xinfo('%1', '%2') WHERE hidden = 0").arg(table, database));
    for (const QVariantList &row : rows)
        names << row[0].toString();
    return names;
}

std::vector<ReadyTable> readyTables(ado::Connection &connection, Scope scope)
{
    std::vector<ReadyTable> tables;
    for (const char *name : tablesOf(scope)) {
        const QString table = QLatin1String(name);
        tables.push_back(readyTable(table, QStringLiteral("kept.") + table,
                                    columnsOf(connection, table, QStringLiteral("main")),
                                    columnsOf(connection, table, QStringLiteral("kept"))));
    }
    return tables;
}

bool countsKeys(ado::Connection &connection, const char *database)
{
    return schema::valueOf(connection, QStringLiteral("SELECT COUNT(*) FROM %1.sqlite_master WHERE name = "
                                                      "'sqlite_sequence'")
                                           .arg(QLatin1String(database)))
               .toInt()
           > 0;
}

/// A key that either has given is not given again.
void countOn(ado::Connection &connection, const std::vector<ReadyTable> &tables)
{
    if (!countsKeys(connection, "main") || !countsKeys(connection, "kept"))
        return;
    for (const ReadyTable &table : tables) {
        const QString row = QStringLiteral("sqlite_sequence WHERE name = '%1'").arg(table.name);
        const auto last = [&](const char *database) {
            return schema::valueOf(connection,
                                   QStringLiteral("SELECT seq FROM %1.%2").arg(QLatin1String(database), row))
                .toLongLong();
        };
        const qint64 kept = last("kept");
        if (kept <= last("main"))
            continue;
        schema::run(connection, QStringLiteral("DELETE FROM main.") + row);
        schema::run(
            connection,
            QStringLiteral("INSERT INTO main.sqlite_sequence (name, seq) VALUES ('%1', %2)").arg(table.name).arg(kept));
    }
}

} // namespace

void replaceSqliteRows(const QString &clinic, const QString &backup, Scope scope, const Progress &progress)
{
    const ado::ConnectionPtr connection = ado::Connection::open(QStringLiteral("sqlite:") + clinic);
    sqlite3_busy_timeout(static_cast<sqlite3 *>(connection->handle()), WaitForDesks);
    journal::attend(*connection);
    schema::run(*connection,
                QStringLiteral("ATTACH '%1' AS kept").arg(QString(backup).replace(u'\'', QStringLiteral("''"))));
    const std::vector<ReadyTable> tables = readyTables(*connection, scope);
    ado::Transaction transaction(*connection);
    schema::holdTables(*connection, {}); // all of the file
    noteRestore(*connection, backup);
    replaceRows(*connection, tables, progress);
    countOn(*connection, tables);
    transaction.commit();
}

} // namespace backup
