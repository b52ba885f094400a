#include "platform/ado/ConnectionPrivate.h"

namespace ado {

namespace {

/// One row that differs once anything has changed; none where the server cannot tell.
QString stateOf(Dialect dialect)
{
    // The first counts what others commit, the second what this session writes; a change of the schema is counted by neither.
    if (dialect == Dialect::SQLite)
        return QStringLiteral("SELECT data_version, total_changes(), schema_version FROM pragma_data_version, "
                              "pragma_schema_version");
    // Who writes has a number, and it ends in another snapshot than it began in. A server that follows another does not tell
    // which ones are under way. Numbers come again on a server that takes the place of this one, behind a pooler, too.
    return QStringLiteral("SELECT txid_current_snapshot(), pg_postmaster_start_time(), pg_backend_pid(), current_user, "
                          "current_schemas(true) WHERE NOT pg_is_in_recovery() "
                          "AND NOT EXISTS (SELECT 1 FROM pg_foreign_table)");
}

} // namespace

quint64 Connection::writes() const
{
    return d->writes;
}

QByteArray Connection::stateSign() const
{
    const bool tells = engine() == Engine::SQLite || engine() == Engine::PostgreSQL;
    if (!tells || !d->levels.empty())
        return {};
    const CellTable state = d->read(d->driver->command() << stateOf(d->driver->dialect()));
    if (d->driver->holdsTransaction() || state.rowCount() != 1) // what is read there may never come true
        return {};
    QByteArray sign = QByteArray::number(d->driver->reopenings()) + ' ' + QByteArray::number(d->writes);
    for (int column = 0; column < state.columnCount(); ++column)
        sign += ' ' + state.raw(0, column).toString().toUtf8();
    return sign;
}

} // namespace ado
