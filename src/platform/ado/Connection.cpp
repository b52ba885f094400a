#include "platform/ado/ConnectionPrivate.h"

#include "platform/runtime/Attempt.h"
#include "platform/runtime/LogText.h"
#include "platform/runtime/ProgramThread.h"
#include "platform/runtime/RuntimeError.h"

#include <algorithm>
#include <exception>

namespace ado {

namespace {

using runtime::ErrorNumber;
using runtime::RuntimeError;

/// Every open connection, for those that end what an event left open.
std::vector<Connection *> &openConnections()
{
    // Never destroyed: a host may hold a connection longer than this library holds anything, as in a global.
    static auto *const connections = new std::vector<Connection *>;
    return *connections;
}

[[noreturn]] void transactionGone()
{
    throw RuntimeError(ErrorNumber::ConnectionLost,
                       QStringLiteral("연결이 끊어져 저장이 취소되었습니다. 처음부터 다시 입력하십시오."));
}

/// What a server says of the statement must not show in the log, which is read by people who look after machines.
void hideStatement(const RuntimeError &error, const Command &statement)
{
    QString &text = error.origin().server.text;
    text = runtime::withoutWordsOf(statement.text(), text);
    for (const QVariant &value : statement.values())
        text = runtime::withoutWordsOf(value.toString(), text);
}

} // namespace

void raiseConflict()
{
    throw RuntimeError(ErrorNumber::Conflict, QStringLiteral("다른 데스크에서 먼저 수정하거나 삭제했습니다."));
}

std::vector<Connection *> connectionsInTransaction()
{
    std::vector<Connection *> found;
    std::ranges::copy_if(openConnections(), std::back_inserter(found), &Connection::inTransaction);
    return found;
}

std::shared_ptr<Connection> Connection::open(const QString &address, bool create)
{
    runtime::demandProgramThread();
    auto opened = std::make_unique<Private>();
    opened->address = address;
    opened->driver = Driver::open(address, create);
    return std::shared_ptr<Connection>(new Connection(std::move(opened)));
}

Connection::Connection(std::unique_ptr<Private> opened)
    : d(std::move(opened))
{
    openConnections().push_back(this);
}

Connection::~Connection()
{
    std::erase(openConnections(), this);
}

const QString &Connection::address() const
{
    return d->address;
}

Engine Connection::engine() const
{
    return d->driver->engine();
}

void *Connection::handle() const
{
    return d->driver->handle();
}

void Connection::BeginTrans()
{
    using enum Private::Transaction;
    runtime::demandProgramThread();
    if (d->transaction != None)
        return;
    static quint64 serials = 0;
    d->transaction = Pending;
    d->serial = ++serials;
}

void Connection::CommitTrans()
{
    using enum Private::Transaction;
    runtime::demandProgramThread();
    const Private::Transaction ended = std::exchange(d->transaction, None);
    const quint64 serial = std::exchange(d->serial, 0);
    switch (ended) {
    case None:
        throw RuntimeError(ErrorNumber::InvalidCall, QStringLiteral("저장할 작업이 시작되지 않았습니다."));
    case Pending:
        return;
    case Lost:
        emit d->rollbacks.happened(serial);
        transactionGone();
    case Started:
        break;
    }
    try {
        d->driver->commit();
    } catch (const RuntimeError &) {
        runtime::Attempt undo; // why it was not saved is the error that tells something
        undo([this] { d->rollBackServer(); });
        emit d->rollbacks.happened(serial);
        throw;
    }
}

void Connection::RollbackTrans()
{
    using enum Private::Transaction;
    runtime::demandProgramThread();
    const Private::Transaction ended = std::exchange(d->transaction, None);
    const quint64 serial = std::exchange(d->serial, 0);
    std::exception_ptr failure;
    try {
        if (ended == Started)
            d->rollBackServer();
    } catch (const RuntimeError &) {
        failure = std::current_exception();
    }
    if (ended == Started || ended == Lost)
        emit d->rollbacks.happened(serial);
    if (failure)
        std::rethrow_exception(failure);
}

bool Connection::inTransaction() const
{
    return d->transaction != Private::Transaction::None;
}

quint64 Connection::transactionSerial() const
{
    return d->serial;
}

int Connection::Execute(const QString &statement)
{
    oneStatement(statement, d->driver->dialect());
    return d->write(d->driver->command() << statement);
}

Command Connection::command() const
{
    return d->driver->command();
}

int Connection::Execute(const Command &command)
{
    oneStatement(command.text(), d->driver->dialect());
    return d->write(command);
}

CellTable Connection::read(const QString &statement) const
{
    oneStatement(statement, d->driver->dialect());
    return d->read(d->driver->command() << statement);
}

bool Connection::holdRow(const QString &table, const QString &key, qint32 value, const QString &also)
{
    // The embedded engine holds the whole database from the transaction's beginning, which readBack sees to.
    Command select = d->driver->command() << u"SELECT " << key << u" FROM " << table << u" WHERE " << key << u" = ";
    select.value(value);
    select << also << (d->driver->dialect() == Dialect::PostgreSQL ? u" FOR UPDATE" : u"");
    return d->readBack(select).rowCount() > 0;
}

void Connection::Private::ensureAlive(Driver::Asking asking)
{
    runtime::demandProgramThread();
    if (transaction == Transaction::Lost)
        transactionGone();
    if (transaction != Transaction::Started && !driver->alive(asking))
        reconnect();
}

void Connection::Private::reconnect()
{
    // A view that paints its rows asks hundreds of times; one attempt, which may wait for seconds, answers all of them.
    constexpr qint64 pause = 1000;
    if (unreachable_.isValid() && unreachable_.elapsed() < pause)
        throw RuntimeError(*whyUnreachable_);
    try {
        driver->reopen();
        unreachable_.invalidate();
    } catch (const RuntimeError &error) {
        unreachable_.start();
        // A file's own trouble names it; what a server or its library says helps nobody at a desk.
        whyUnreachable_ =
            driver->engine() == Engine::SQLite
                ? error
                : error.toldAs(ErrorNumber::ConnectionLost,
                               QStringLiteral("데이터베이스에 연결할 수 없습니다.\n서버와 네트워크를 확인하십시오."));
        throw RuntimeError(*whyUnreachable_);
    }
}

void Connection::Private::beforeWrite()
{
    ensureAlive(Driver::Asking::WhereNeeded);
    if (transaction != Transaction::Pending)
        return;
    driver->begin();
    transaction = Transaction::Started;
}

void Connection::Private::rollBackServer()
{
    try {
        if (driver->holdsTransaction())
            driver->rollback();
    } catch (const RuntimeError &) {
        runtime::trapped();
        // A server that cannot be asked any more has rolled back by itself. What still holds a transaction after this
        // would let the next sale run into it, so the session ends with it.
        if (driver->holdsTransaction())
            driver->reopen();
    }
}

void Connection::Private::noteFailure()
{
    if (transaction == Transaction::Started && !driver->holdsTransaction())
        transaction = Transaction::Lost;
}

template <typename Run>
auto Connection::Private::shielded(const Command &statement, Run run)
{
    const bool savepoint = transaction == Transaction::Started && driver->needsSavepoints();
    if (savepoint)
        driver->write(driver->command() << u"SAVEPOINT statement");
    try {
        auto result = run();
        if (savepoint)
            driver->write(driver->command() << u"RELEASE SAVEPOINT statement");
        return result;
    } catch (const RuntimeError &error) {
        hideStatement(error, statement);
        const std::exception_ptr failure = std::current_exception();
        noteFailure();
        if (savepoint && transaction == Transaction::Started)
            driver->write(driver->command() << u"ROLLBACK TO SAVEPOINT statement");
        std::rethrow_exception(failure);
    }
}

int Connection::Private::write(const Command &statement)
{
    beforeWrite();
    return shielded(statement, [&] { return driver->write(statement); });
}

CellTable Connection::Private::readBack(const Command &statement)
{
    beforeWrite();
    return shielded(statement, [&] { return driver->read(statement); });
}

CellTable Connection::Private::read(const Command &select)
{
    ensureAlive(Driver::Asking::Never);
    try {
        return shielded(select, [&] { return driver->read(select); });
    } catch (const RuntimeError &error) {
        // A reading that met a server gone since the last statement can be asked again without harm; a writing cannot.
        if (error.number() != ErrorNumber::ConnectionLost || transaction == Transaction::Started
            || transaction == Transaction::Lost)
            throw;
        runtime::trapped();
        reconnect();
    }
    return shielded(select, [&] { return driver->read(select); });
}

RowKey Connection::Private::realKeyOf(const Table &table)
{
    if (const auto known = realKeys_.constFind(table.name); known != realKeys_.cend())
        return *known;
    const CellTable candidates = read(candidatesForKey(driver->command(), table, driver->dialect()));
    return *realKeys_.insert(table.name, keyAmong(candidates, table));
}

} // namespace ado
