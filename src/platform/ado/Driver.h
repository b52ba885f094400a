#pragma once

#include "platform/ado/CellTable.h"
#include "platform/ado/Command.h"
#include "platform/ado/Connection.h"
#include "platform/ado/SqlText.h"
#include "platform/runtime/RuntimeError.h"

#include <memory>

namespace ado {

/// One engine behind a connection: runs statements and knows nothing of transactions beyond the server's own.
/// Failures raise RuntimeError: Database, or ConnectionLost when the server is gone.
class Driver
{
public:
    /// Opens the address; see Connection::open.
    static std::unique_ptr<Driver> open(const QString &address, bool create);

    virtual ~Driver();
    Driver(const Driver &) = delete;
    Driver &operator=(const Driver &) = delete;

    virtual Engine engine() const = 0;
    virtual Dialect dialect() const = 0;
    const QSqlDatabase &database() const { return database_; }

    /// An empty command in the engine's manner of passing values.
    virtual Command command() const = 0;
    virtual CellTable read(const Command &select) = 0;
    /// Number of rows touched, -1 where the engine does not tell.
    virtual int write(const Command &statement) = 0;

    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;
    /// Whether the server still holds the transaction that begin() started.
    virtual bool holdsTransaction() const = 0;
    /// A failed statement inside a transaction must leave the earlier ones standing: true where only a savepoint does that.
    virtual bool needsSavepoints() const { return false; }

    enum class Asking { Never, WhereNeeded };
    /// Whether the server is still there. Where the engine does not notice a lost server by itself, it is asked if that is
    /// allowed: before a writing, which unlike a reading cannot be tried a second time.
    virtual bool alive(Asking) { return true; }
    /// Ends the session and opens another; where that fails there is none, and the next statement tries again.
    void reopen();

protected:
    explicit Driver(const QSqlDatabase &database);
    /// Opens database_; raises ConnectionLost.
    void openDatabase();
    /// Settings of the new session.
    virtual void prepareSession() {}
    /// Gives back what the session still holds, before it is closed. No statement reaches it afterwards.
    virtual void endSession() {}

    /// `state` is the SQL state or the engine's own number, for the log.
    [[noreturn]] static void refuse(const QString &serverText, const QByteArray &state = {},
                                    runtime::Place raised = runtime::Place::here());
    /// A session that stood is gone.
    [[noreturn]] static void sessionLost(runtime::Place raised = runtime::Place::here());
    /// None could be opened.
    [[noreturn]] static void connectionLost(const QString &serverText, const QByteArray &state = {},
                                            runtime::Place raised = runtime::Place::here());
    /// Name of a new Qt connection of that Qt driver.
    static QSqlDatabase newDatabase(const QString &qtDriver);

private:
    struct LastSessions;

    void closeSession();
    void forgetDatabase();

    QSqlDatabase database_;
};

/// Names and types of the result: the registry's where it knows the column, else the statement's spelling.
ResultColumn describeColumn(const QString &name, bool numeric, QStringView statement);

} // namespace ado
