#include "desk/schema/Statements.h"

#include "platform/ado/CellTable.h"
#include "platform/runtime/RuntimeError.h"

#include <QRegularExpression>

#include <sqlite3.h>

namespace schema {

void refuse(const QString &what)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::Database, what);
}

namespace {

/// Whether the server waited long enough for another desk, or the embedded engine did.
bool wasHeld(const runtime::RuntimeError &error)
{
    constexpr int embeddedBusy = 5; // the low byte of the engine's own numbers
    const QByteArray &state = error.origin().server.state;
    return state == "55P03" || state == "1205" || (state.size() < 4 && (state.toInt() & 0xff) == embeddedBusy);
}

template <typename Work>
auto toldToTechnician(Work &&work)
{
    try {
        return std::forward<Work>(work)();
    } catch (const runtime::RuntimeError &error) {
        if (!wasHeld(error))
            throw;
        throw error.toldAs(
            error.number(),
            QStringLiteral("데스크가 데이터베이스를 사용 중입니다. 데스크를 모두 닫고 다시 시도하십시오."));
    }
}

} // namespace

namespace {

/// The layer takes no statement that holds others, which a trigger of the embedded engine does.
void defineTrigger(ado::Connection &connection, const QString &statement)
{
    auto *handle = static_cast<sqlite3 *>(connection.handle());
    if (sqlite3_exec(handle, statement.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        refuse(QString::fromUtf8(sqlite3_errmsg(handle)));
}

} // namespace

void run(ado::Connection &connection, const QString &statement)
{
    static const QRegularExpression trigger(QStringLiteral("^CREATE (TEMP )?TRIGGER "));
    if (connection.engine() == ado::Engine::SQLite && statement.contains(trigger))
        return defineTrigger(connection, statement);
    toldToTechnician([&] { return connection.Execute(statement); });
}

QList<QVariantList> rowsOf(ado::Connection &connection, const QString &statement)
{
    const ado::CellTable table = toldToTechnician([&] { return connection.read(statement); });
    QList<QVariantList> rows;
    for (int row = 0; row < table.rowCount(); ++row) {
        QVariantList values;
        for (int column = 0; column < table.columnCount(); ++column)
            values << table.raw(row, column);
        rows << values;
    }
    return rows;
}

QVariant valueOf(ado::Connection &connection, const QString &statement)
{
    return rowsOf(connection, statement).value(0).value(0);
}

void holdTables(ado::Connection &connection, const QStringList &tables)
{
    if (connection.engine() == ado::Engine::SQLite) {
        connection.holdRow(QStringLiteral("sqlite_master"), QStringLiteral("rowid"), 0); // begins it
        return;
    }
    if (connection.engine() == ado::Engine::MariaDB)
        return; // where each definition waits for itself
    run(connection, QStringLiteral("SET LOCAL lock_timeout = '15s'"));
    run(connection, QStringLiteral("LOCK TABLE %1 IN SHARE ROW EXCLUSIVE MODE").arg(tables.join(QStringLiteral(", "))));
}

} // namespace schema
