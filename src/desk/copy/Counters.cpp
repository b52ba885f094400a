#include "desk/copy/Counters.h"

#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "desk/schema/Tables.h"

namespace copy {

namespace {

QString nameOf(const schema::TablePlan &table)
{
    return QString::fromLatin1(table.name);
}

/// The server's counter behind a table's key; empty where there is none, or no such column.
QString counterOf(ado::Connection &connection, const schema::TablePlan &table)
{
    return schema::valueOf(
               connection,
               QStringLiteral("SELECT pg_get_serial_sequence('%1', '%2') WHERE EXISTS (SELECT FROM pg_attribute "
                              "WHERE attrelid = to_regclass('%1') AND attname = '%2')")
                   .arg(nameOf(table).toLower(), QString::fromLatin1(table.key().name).toLower()))
        .toString();
}

QVariant lastGiven(ado::Connection &connection, const schema::TablePlan &table)
{
    if (schema::dialectOf(connection) == schema::Dialect::MariaDB)
        return schema::valueOf(connection,
                               QStringLiteral("SELECT auto_increment - 1 FROM information_schema.tables WHERE "
                                              "table_schema = DATABASE() AND table_name = '%1' AND auto_increment > 1")
                                   .arg(nameOf(table).toLower()));
    if (schema::dialectOf(connection) == schema::Dialect::SQLite)
        return schema::valueOf(
            connection,
            QStringLiteral("SELECT seq FROM sqlite_sequence WHERE name = '%1' COLLATE NOCASE").arg(nameOf(table)));
    const QString counter = counterOf(connection, table);
    if (counter.isEmpty())
        return {};
    return schema::valueOf(connection,
                           QStringLiteral("SELECT CASE WHEN is_called THEN last_value ELSE last_value - 1 END FROM ")
                               + counter);
}

bool keepsCounters(ado::Connection &connection)
{
    return schema::dialectOf(connection) != schema::Dialect::SQLite
           || schema::valueOf(connection,
                              QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE name = 'sqlite_sequence'"))
                      .toInt()
                  > 0;
}

void setCounter(ado::Connection &connection, const schema::TablePlan &table, qint64 last)
{
    if (schema::dialectOf(connection) == schema::Dialect::MariaDB) {
        schema::run(connection, QStringLiteral("ALTER TABLE %1 AUTO_INCREMENT = %2").arg(nameOf(table)).arg(last + 1));
        return;
    }
    if (schema::dialectOf(connection) != schema::Dialect::SQLite) {
        schema::run(connection, QStringLiteral("SELECT setval('%1', %2)").arg(counterOf(connection, table)).arg(last));
        return;
    }
    schema::run(connection, QStringLiteral("DELETE FROM sqlite_sequence WHERE name = '%1'").arg(nameOf(table)));
    schema::run(
        connection,
        QStringLiteral("INSERT INTO sqlite_sequence (name, seq) VALUES ('%1', %2)").arg(nameOf(table)).arg(last));
}

} // namespace

QHash<QString, qint64> counters(ado::Connection &connection)
{
    QHash<QString, qint64> all;
    if (!keepsCounters(connection))
        return all;
    for (const schema::TablePlan &table : schema::tablePlans()) {
        if (table.key().holds != schema::Holds::Key)
            continue;
        if (const QVariant last = lastGiven(connection, table); last.isValid())
            all.insert(nameOf(table), last.toLongLong());
    }
    return all;
}

void countOn(ado::Connection &connection, const QHash<QString, qint64> &given)
{
    schema::continueKeys(connection);
    const QHash<QString, qint64> here = counters(connection);
    for (const schema::TablePlan &table : schema::tablePlans()) {
        const qint64 last = given.value(nameOf(table));
        if (last > here.value(nameOf(table)))
            setCounter(connection, table, last);
    }
}

} // namespace copy
