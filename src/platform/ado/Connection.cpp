#include "platform/ado/ConnectionPrivate.h"

#include "platform/ado/LentDatabase.h"
#include "platform/ado/Wait.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/LogText.h"
#include "platform/runtime/ProgramThread.h"
#include "platform/runtime/RuntimeError.h"

#include <QRegularExpression>
#include <QScopedValueRollback>

#include <algorithm>
#include <exception>

namespace ado {

namespace {

using runtime::ErrorNumber;
using runtime::RuntimeError;

[[noreturn]] void transactionGone()
{
    throw RuntimeError(ErrorNumber::ConnectionLost,
                       QStringLiteral("연결이 끊어져 저장이 취소되었습니다. 처음부터 다시 입력하십시오."));
}

/// The whole of a raw "COMMIT", which PostgreSQL takes without a transaction, too.
bool isCommit(const QString &statement)
{
    static const QRegularExpression commit(QStringLiteral("^\\s*(COMMIT|END)(\\s+(WORK|TRANSACTION))?\\s*$"),
                                           QRegularExpression::CaseInsensitiveOption);
    return commit.match(statement).hasMatch();
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

std::vector<Connection *> &openConnections()
{
    // Never destroyed: a host may hold a connection longer than this library holds anything, as in a global.
    static auto *const connections = new std::vector<Connection *>;
    return *connections;
}

void nothingToSave()
{
    throw RuntimeError(ErrorNumber::InvalidCall, QStringLiteral("저장할 작업이 시작되지 않았습니다."));
}

std::shared_ptr<Connection> Connection::open(const QString &address, bool create)
{
    runtime::demandProgramThread();
    auto opened = std::make_unique<Private>();
    opened->address = address;
    opened->driver = Driver::open(address, create);
    return Private::shared(std::move(opened));
}

std::shared_ptr<Connection> Connection::adopt(const QSqlDatabase &database)
{
    runtime::demandProgramThread();
    auto opened = std::make_unique<Private>();
    const LentDatabase lent(database);
    opened->address = lent.address();
    opened->driver = Driver::adopt(lent);
    return Private::shared(std::move(opened));
}

std::shared_ptr<Connection> Connection::Private::shared(std::unique_ptr<Private> opened)
{
    std::shared_ptr<Connection> connection(new Connection(std::move(opened)));
    connection->d->self = connection;
    return connection;
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
    runtime::demandProgramThread();
    if (inTransaction())
        return;
    static quint64 serials = 0;
    d->levels.push_back({++serials, AbandonedTransactions::depth()});
}

void Connection::CommitTrans()
{
    using enum Private::Level::State;
    runtime::demandProgramThread();
    const ConnectionPtr held = d->self.lock();
    if (d->levels.empty())
        nothingToSave();
    const Private::Level ended = d->levels.back();
    d->levels.pop_back();
    switch (ended.state) {
    case Pending:
        return;
    case Lost:
        emit d->rollbacks.happened(ended.serial);
        if (ended.commitSent)
            Driver::sessionLost();
        transactionGone();
    case Started:
        break;
    }
    try {
        d->commitServer(ended);
    } catch (const RuntimeError &) {
        runtime::Attempt undo; // why it was not saved is the error that tells something
        undo([&] { d->rollBackServer(ended); });
        emit d->rollbacks.happened(ended.serial);
        throw;
    }
}

void Connection::RollbackTrans()
{
    using enum Private::Level::State;
    runtime::demandProgramThread();
    const ConnectionPtr held = d->self.lock();
    if (d->levels.empty())
        return;
    const Private::Level ended = d->levels.back();
    d->levels.pop_back();
    std::exception_ptr failure;
    try {
        if (ended.state == Started)
            d->rollBackServer(ended);
    } catch (const RuntimeError &) {
        failure = std::current_exception();
    }
    if (ended.state != Pending)
        emit d->rollbacks.happened(ended.serial);
    if (failure)
        std::rethrow_exception(failure);
}

bool Connection::inTransaction() const
{
    return d->ownLevel() != nullptr;
}

quint64 Connection::transactionSerial() const
{
    const Private::Level *own = d->ownLevel();
    return own ? own->serial : 0;
}

int Connection::Execute(const QString &statement, Then then)
{
    oneStatement(statement, d->driver->dialect());
    const int touched = d->write(d->driver->command() << statement, then);
    if (then == Then::Commit)
        CommitTrans();
    return touched;
}

void Connection::Execute(const QStringList &statements)
{
    std::vector<Command> commands;
    for (const QString &statement : statements) {
        oneStatement(statement, d->driver->dialect());
        commands.push_back(d->driver->command() << statement);
    }
    d->writeAll(commands);
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
    return d->read(d->driver->told(statement));
}

bool Connection::holdRow(const QString &table, const QString &key, qint32 value, const QString &also)
{
    // The embedded engine holds the whole database from the transaction's beginning, which readBack sees to.
    return d->readBack(d->holding(table, key, value, also)).rowCount() > 0;
}

void Connection::learnKey(const QString &table)
{
    if (const Table *const known = findTable(table); known && !known->keyIsTold)
        d->realKeyOf(*known);
}

const Connection::Private::Level *Connection::Private::ownLevel() const
{
    return !levels.empty() && levels.back().depth >= AbandonedTransactions::depth() ? &levels.back() : nullptr;
}

quint64 Connection::Private::startedSerial() const
{
    const auto started = std::ranges::find(levels.rbegin(), levels.rend(), Level::State::Started, &Level::state);
    return started == levels.rend() ? 0 : started->serial;
}

bool Connection::Private::anyIn(Level::State state) const
{
    return std::ranges::find(levels, state, &Level::state) != levels.end();
}

void Connection::Private::ensureAlive(Driver::Asking asking)
{
    runtime::demandProgramThread();
    if (reconnecting_ || driver->isAwaited())
        Driver::refuseWhileAwaited();
    noteLoss();
    if (anyIn(Level::State::Lost))
        transactionGone();
    if (anyIn(Level::State::Started))
        return;
    const bool alive = driver->alive(asking);
    const bool foreignLost = !alive && std::exchange(foreign_, false);
    if (!alive)
        reconnect();
    if (foreignLost) // half of it must not be saved alone
        transactionGone();
    foreign_ = driver->holdsTransaction();
}

void Connection::Private::reconnect()
{
    // A view that paints its rows asks hundreds of times; one attempt, which may wait for seconds, answers all of them.
    constexpr qint64 pause = 1000;
    constexpr int halfASecond = 500;
    if (!driver->isLent() && unreachable_.isValid() && unreachable_.elapsed() < pause)
        throw RuntimeError(*whyUnreachable_);
    const QScopedValueRollback underWay(reconnecting_, true);
    Wait wait; // one, from the loss to the session
    if (!lostSince_.isValid())
        lostSince_.start();
    while (!reopened()) {
        if (!wait.isAlive() || !mayComeBack() || !wait.pass(halfASecond))
            throw RuntimeError(*whyUnreachable_);
    }
    lostSince_.invalidate();
}

bool Connection::Private::reopened()
{
    try {
        driver->reopen();
        unreachable_.invalidate();
        return true;
    } catch (const RuntimeError &error) {
        unreachable_.start();
        // A file's own trouble names it, and so does a host's; what a server or its library says helps nobody at a desk.
        whyUnreachable_ =
            driver->engine() == Engine::SQLite || driver->isLent()
                ? error
                : error.toldAs(ErrorNumber::ConnectionLost,
                               QStringLiteral("데이터베이스에 연결할 수 없습니다.\n서버와 네트워크를 확인하십시오."));
        return false;
    }
}

/// One that is started anew, or another that takes its place, is there within seconds: whoever can wait for it without
/// standing still does, once.
bool Connection::Private::mayComeBack() const
{
    constexpr qint64 usualAbsence = 15'000;
    return driver->engine() != Engine::SQLite && !driver->isLent() && lostSince_.elapsed() < usualAbsence;
}

void Connection::Private::beforeWrite()
{
    ++writes;
    ensureAlive(Driver::Asking::WhereNeeded);
    for (Level &level : levels) {
        if (level.state == Level::State::Pending)
            start(level);
    }
}

void Connection::Private::start(Level &level)
{
    level.savepoint = driver->holdsTransaction();
    if (level.savepoint)
        driver->write(savepoint(u"SAVEPOINT", level));
    else
        driver->begin();
    level.state = Level::State::Started;
}

/// Numbered by their place, so that the engine need not prepare ever new texts.
Command Connection::Private::savepoint(QStringView verb, const Level &level) const
{
    const auto outer = std::ranges::count_if(levels, [&](const Level &one) { return one.serial < level.serial; });
    return driver->command() << verb << u" desk_" << QString::number(outer);
}

void Connection::Private::commitServer(const Level &level)
{
    if (level.savepoint)
        driver->write(savepoint(u"RELEASE SAVEPOINT", level));
    else
        driver->commit();
}

void Connection::Private::rollBackServer(const Level &level)
{
    try {
        if (driver->holdsTransaction()) {
            if (level.savepoint) {
                driver->write(savepoint(u"ROLLBACK TO SAVEPOINT", level));
                driver->write(savepoint(u"RELEASE SAVEPOINT", level));
            } else {
                driver->rollback();
            }
        }
    } catch (const RuntimeError &) {
        runtime::trapped();
        // A server that cannot be asked any more has rolled back by itself. What still holds a transaction after this
        // would let the next sale run into it, so the session ends with it, and with whatever the work lay in.
        if (driver->holdsTransaction()) {
            driver->reopen();
            if (driver->holdsTransaction()) // a host's session, which is not ended here
                throw;
        }
    }
    noteLoss();
}

void Connection::Private::noteLoss()
{
    if (!anyIn(Level::State::Started) || driver->holdsTransaction())
        return;
    for (Level &level : levels) {
        if (level.state == Level::State::Started)
            level.state = Level::State::Lost;
    }
}

template <typename Run>
auto Connection::Private::shielded(std::span<const Command> statements, Run run)
{
    // The server hands out no snapshot within a savepoint.
    std::optional<Driver::Guard> guard;
    if (driver->needsSavepoints() && driver->holdsTransaction()
        && !statements.front().text().contains(QLatin1String("pg_export_snapshot")))
        guard = {driver->command() << u"SAVEPOINT statement", driver->command() << u"RELEASE SAVEPOINT statement",
                 driver->command() << u"ROLLBACK TO SAVEPOINT statement"};
    try {
        return run(guard ? &*guard : nullptr);
    } catch (const RuntimeError &error) {
        for (const Command &statement : statements)
            hideStatement(error, statement);
        const std::exception_ptr failure = std::current_exception();
        noteLoss();
        if (guard && driver->holdsTransaction())
            undoStatement(*guard);
        std::rethrow_exception(failure);
    }
}

CellTable Connection::Private::shieldedRead(const Command &select)
{
    return shielded({&select, 1}, [&](const Driver::Guard *guard) {
        return guard ? driver->readWithin(*guard, select) : driver->read(select);
    });
}

/// Where even its savepoint was refused the first refusal is the one to tell.
void Connection::Private::undoStatement(const Driver::Guard &guard)
{
    try {
        driver->write(guard.undo);
    } catch (const RuntimeError &error) {
        if (error.number() == ErrorNumber::ConnectionLost)
            throw;
        runtime::trapped();
    }
}

int Connection::Private::write(const Command &statement, Then then)
{
    const ConnectionPtr held = self.lock();
    beforeWrite();
    if (!driver->holdsTransaction() && isCommit(statement.text()))
        nothingToSave();
    if (then == Then::Commit)
        commitBehindNext();
    return shielded({&statement, 1}, [&](const Driver::Guard *guard) {
        return guard ? driver->writeWithin(*guard, statement) : driver->write(statement);
    });
}

void Connection::Private::commitBehindNext()
{
    if (levels.size() != 1 || levels.front().savepoint || levels.front().state != Level::State::Started)
        return;
    levels.front().commitSent = driver->commitBehindNext(true);
}

void Connection::Private::writeAll(std::span<const Command> statements)
{
    const ConnectionPtr held = self.lock();
    beforeWrite();
    shielded(statements, [&](const Driver::Guard *guard) {
        if (guard)
            return driver->writeAllWithin(*guard, statements);
        for (const Command &statement : statements)
            driver->write(statement);
    });
}

Command Connection::Private::holding(const QString &table, const QString &key, qint32 value, const QString &also) const
{
    Command select = driver->command() << u"SELECT " << key << u" FROM " << table << u" WHERE " << key << u" = ";
    select.value(value);
    return select << also << (driver->dialect() == Dialect::SQLite ? u"" : u" FOR UPDATE");
}

CellTable Connection::Private::readBack(const Command &statement)
{
    const ConnectionPtr held = self.lock();
    beforeWrite();
    return shieldedRead(statement);
}

CellTable Connection::Private::read(const Command &select)
{
    const ConnectionPtr held = self.lock();
    ensureAlive(Driver::Asking::Never);
    try {
        return shieldedRead(select);
    } catch (const RuntimeError &error) {
        // A reading that met a server gone since the last statement can be asked again without harm; a writing cannot.
        if (error.number() != ErrorNumber::ConnectionLost || anyIn(Level::State::Started) || anyIn(Level::State::Lost)
            || foreign_)
            throw;
        runtime::trapped();
        reconnect();
    }
    return shieldedRead(select);
}

RowKey Connection::Private::realKeyOf(const Table &table)
{
    if (const auto known = realKeys_.constFind(table.name); known != realKeys_.cend())
        return *known;
    const CellTable candidates = read(candidatesForKey(driver->command(), table, driver->dialect()));
    return *realKeys_.insert(table.name, keyAmong(candidates, table));
}

} // namespace ado
