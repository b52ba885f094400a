#include "trials/interleavings/Gate.h"

#include <QThread>

#include <dlfcn.h>
#include <libpq-fe.h>
#include <sqlite3.h>

#include <string_view>

namespace trial::gate {

namespace {

Pause &pause()
{
    static Pause current;
    return current;
}

void stopBefore(std::string_view statement, bool inTransaction)
{
    if (pause())
        pause()(Stop::Statement, QByteArray(statement.data(), qsizetype(statement.size())), inTransaction);
}

bool inTransaction(void *handle)
{
    return sqlite3_get_autocommit(static_cast<sqlite3 *>(handle)) == 0;
}

int beforeStatement(unsigned, void *handle, void *, void *text)
{
    const std::string_view statement(static_cast<const char *>(text));
    if (!statement.starts_with("--")) // a trigger's
        stopBefore(statement, inTransaction(handle));
    return 0;
}

int onLocked(void *handle, int)
{
    if (pause())
        pause()(Stop::Lock, {}, inTransaction(handle));
    else
        QThread::msleep(1);
    return 1;
}

} // namespace

void watch(const ado::Connection &connection)
{
    if (connection.engine() != ado::Engine::SQLite)
        return;
    auto *const handle = static_cast<sqlite3 *>(connection.handle());
    sqlite3_trace_v2(handle, SQLITE_TRACE_STMT, beforeStatement, handle);
    sqlite3_busy_handler(handle, onLocked, handle);
}

void setPause(Pause wanted)
{
    pause() = std::move(wanted);
}

int serverProcess(const ado::Connection &connection)
{
    return connection.engine() == ado::Engine::PostgreSQL ? PQbackendPID(static_cast<PGconn *>(connection.handle()))
                                                          : 0;
}

} // namespace trial::gate

/// These are found before the library's own by everything in this process. A desk that stopped within what it sends in one go
/// would stop before the server has any of it.
extern "C" int PQenterPipelineMode(PGconn *)
{
    return 0;
}

/// Goes on to the library's own.
extern "C" int PQsendQueryParams(PGconn *session, const char *statement, int count, const Oid *types,
                                 const char *const *values, const int *lengths, const int *formats, int resultFormat)
{
    static const auto own = reinterpret_cast<decltype(&PQsendQueryParams)>(dlsym(RTLD_NEXT, "PQsendQueryParams"));
    const std::string_view text(statement);
    bool guards = false;
    for (const char *word : {"BEGIN", "SAVEPOINT", "RELEASE"})
        guards = guards || text.starts_with(word);
    if (!guards)
        trial::gate::stopBefore(text, PQtransactionStatus(session) != PQTRANS_IDLE);
    return own(session, statement, count, types, values, lengths, formats, resultFormat);
}
