#pragma once

#include "platform/ado/CellTable.h"
#include "platform/ado/Command.h"
#include "platform/ado/Connection.h"
#include "platform/ado/SqlText.h"
#include "platform/runtime/RuntimeError.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace ado {

class LentDatabase;

/// What tells of a table, after it was read, which of its rows have changed since. Nothing in it is a time of day.
struct TableMoment
{
    std::uint64_t log = 0;           ///< of the rows that this session wrote; another session has others
    std::size_t place = 0;           ///< in it
    std::int64_t othersWritings = 0; ///< differs when anybody else has written
    std::int64_t schema = 0;         ///< differs when the tables have

    /// Whether what happened between them is in the log alone.
    bool onlyLoggedUntil(const TableMoment &later) const
    {
        return othersWritings == later.othersWritings && schema == later.schema;
    }
};

/// One engine behind a connection: runs statements and knows nothing of transactions beyond the server's own.
/// Failures raise RuntimeError: Database, or ConnectionLost when the server is gone.
class Driver
{
public:
    /// Opens the address; see Connection::open.
    static std::unique_ptr<Driver> open(const QString &address, bool create);
    /// Takes the host's session; see Connection::adopt.
    static std::unique_ptr<Driver> adopt(const LentDatabase &lent);

    virtual ~Driver();
    Driver(const Driver &) = delete;
    Driver &operator=(const Driver &) = delete;

    /// The session is the host's.
    virtual bool isLent() const { return false; }
    virtual Engine engine() const = 0;
    virtual Dialect dialect() const = 0;
    /// The session in the engine's own interface; null where that is not at hand.
    virtual void *handle() { return nullptr; }

    /// An empty command in the engine's manner of passing values.
    virtual Command command() const = 0;
    /// A text from outside the layer, which holds one statement and no more, or an error is raised.
    virtual Command told(const QString &statement) const;
    virtual CellTable read(const Command &select) = 0;
    /// Number of rows touched, -1 where the engine does not tell.
    virtual int write(const Command &statement) = 0;

    /// Statements around another: the second only where a transaction is still open behind it, the third where it failed. An
    /// engine that can sends the first two with it, in one go.
    struct Guard
    {
        Command before;
        Command behind;
        Command undo;
    };
    virtual CellTable readWithin(const Guard &guard, const Command &select);
    virtual int writeWithin(const Guard &guard, const Command &statement);
    /// One after the other, or with whatever is sent next: behind one that failed none is run, that next one neither.
    virtual void writeAllWithin(const Guard &guard, std::span<const Command> statements);

    /// Readings that are to come next, in this order. Where each answer costs the way to a server and back they are sent with
    /// the next statement, or with the first of them; whatever else is sent before they are asked for makes them forgotten.
    virtual void foresee(std::span<const Command> /*selects*/) {}
    /// Those that are to come behind each commit, until others are told.
    virtual void foreseeBehindCommit(std::span<const Command> /*selects*/) {}
    /// Asks for what is to come next without waiting for it: its answers are taken when the first of it is asked for. Where
    /// that cannot be, it goes as ever.
    virtual void sendForeseen() {}
    /// What has come for it, which stays.
    virtual std::optional<CellTable> cameFor(const Command &) const { return std::nullopt; }
    /// Whether this one is to come next.
    virtual bool isForeseen(const Command &) const { return false; }
    virtual bool looksAhead() const { return false; }

    /// May be sent with the first statement.
    virtual void begin() = 0;
    /// The commit, which follows at once, is wanted with the next statement; whether it will be sent so. One that fails is
    /// not committed.
    virtual bool commitBehindNext(bool) { return false; }
    virtual void commit() = 0;
    virtual void rollback() = 0;
    /// Whether the server holds a transaction: that of begin(), or one that was begun past this layer. Where the engine does
    /// not tell of the latter by itself, as it was when alive() asked.
    virtual bool holdsTransaction() const = 0;
    /// A failed statement inside a transaction must leave the earlier ones standing: true where only a savepoint does that.
    virtual bool needsSavepoints() const { return false; }

    /// The moment of now, to be asked before the table is read. None where the engine cannot tell of changes for certain, and
    /// inside a transaction, which may be undone.
    virtual std::optional<TableMoment> momentOf(const Table &) { return std::nullopt; }
    /// Keys of the rows that this session has inserted or updated since then; none when it cannot be told any more. Rows
    /// may also have gone.
    virtual std::optional<std::vector<std::int64_t>> writtenSince(const TableMoment &) { return std::nullopt; }

    /// Until it is let go, or something is written, what is read is of this moment, and the engine is entered but once. False
    /// where that is not for the asking.
    virtual bool holdMoment() { return false; }
    virtual void letMomentGo() {}

    enum class Asking { Never, WhereNeeded };
    /// Whether the server is still there. Where the engine does not notice a lost server by itself, it is asked if that is
    /// allowed: before a writing, which unlike a reading cannot be tried a second time.
    virtual bool alive(Asking) { return true; }
    /// Ends the session and opens another; where that fails there is none, and the next statement tries again.
    void reopen();
    /// How often that was done.
    int reopenings() const { return reopenings_; }
    /// Whether one of its statements, or its dialling, is being waited for by what lets something else run meanwhile.
    virtual bool isAwaited() const { return false; }
    /// Whether its answers take so long, all of the session, that something can be done meanwhile which is of little use.
    virtual bool isFar() const { return false; }
    /// A session that stood is gone.
    [[noreturn]] static void sessionLost(runtime::Place raised = runtime::Place::here());
    /// Another statement of the same connection waits.
    [[noreturn]] static void refuseWhileAwaited();

protected:
    Driver();
    /// Opens a session and sets it up; raises ConnectionLost, or what the server refused.
    virtual void openSession() = 0;
    /// Ends it, also one that is half set up or gone; the destructor of each engine does so, too.
    virtual void closeSession() = 0;

    /// `state` is the SQL state or the engine's own number, for the log.
    [[noreturn]] static void refuse(const QString &serverText, const QByteArray &state = {},
                                    runtime::Place raised = runtime::Place::here());
    /// The session's settings would have the server read the statement in another way than the layer has.
    [[noreturn]] static void refuseOtherReading();
    /// None could be opened.
    [[noreturn]] static void connectionLost(const QString &serverText, const QByteArray &state = {},
                                            runtime::Place raised = runtime::Place::here());

    /// Closes for good. At the process's end a driver in a global of the host's outlives what it needs for that.
    virtual void leave() { closeSession(); }
    /// A static of it, made when that is there, has every driver leave before it goes.
    struct LastSessions
    {
        LastSessions() = default;
        LastSessions(const LastSessions &) = delete;
        LastSessions &operator=(const LastSessions &) = delete;
        ~LastSessions();
    };

private:
    int reopenings_ = 0;
};

/// Names and types of the result: the registry's where it knows the column, else the statement's spelling.
ResultColumn describeColumn(const QString &name, bool numeric, QStringView statement);

} // namespace ado
