#pragma once

#include "platform/ado/CellTable.h"
#include "platform/ado/Command.h"
#include "platform/ado/Connection.h"
#include "platform/ado/SqlText.h"
#include "platform/runtime/RuntimeError.h"

#include <memory>

namespace ado {

class LentDatabase;

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
    virtual void *handle() const { return nullptr; }

    /// An empty command in the engine's manner of passing values.
    virtual Command command() const = 0;
    virtual CellTable read(const Command &select) = 0;
    /// Number of rows touched, -1 where the engine does not tell.
    virtual int write(const Command &statement) = 0;

    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;
    /// Whether the server holds a transaction: that of begin(), or one that was begun past this layer. Where the engine does
    /// not tell of the latter by itself, as it was when alive() asked.
    virtual bool holdsTransaction() const = 0;
    /// A failed statement inside a transaction must leave the earlier ones standing: true where only a savepoint does that.
    virtual bool needsSavepoints() const { return false; }

    enum class Asking { Never, WhereNeeded };
    /// Whether the server is still there. Where the engine does not notice a lost server by itself, it is asked if that is
    /// allowed: before a writing, which unlike a reading cannot be tried a second time.
    virtual bool alive(Asking) { return true; }
    /// Ends the session and opens another; where that fails there is none, and the next statement tries again.
    void reopen();
    /// Whether one of its statements, or its dialling, is being waited for by what lets something else run meanwhile.
    virtual bool isAwaited() const { return false; }
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
    /// A session that stood is gone.
    [[noreturn]] static void sessionLost(runtime::Place raised = runtime::Place::here());
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
};

/// Names and types of the result: the registry's where it knows the column, else the statement's spelling.
ResultColumn describeColumn(const QString &name, bool numeric, QStringView statement);

} // namespace ado
