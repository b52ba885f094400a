#pragma once

#include "platform/ado/Connection.h"
#include "platform/ado/Driver.h"
#include "platform/ado/KeptRows.h"
#include "platform/ado/KnownOrders.h"
#include "platform/ado/RowKey.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace ado {

/// Tells the recordsets of a connection that what was read and written in a transaction never was.
class Rollbacks : public QObject
{
    Q_OBJECT
signals:
    void happened(quint64 serial);
};

struct Connection::Private
{
    /// One owner's transaction; within another's it is a savepoint of the server's.
    struct Level
    {
        enum class State {
            Pending, ///< begun, nothing written: the server knows nothing of it
            Started,
            Lost, ///< the server gave it up by itself; stays until somebody commits (an error) or rolls back
        };

        quint64 serial;
        int depth; ///< of handlers that it was begun in
        State state = State::Pending;
        bool savepoint = false;
        bool commitSent = false; ///< with a statement that may have been the last
    };

    static std::shared_ptr<Connection> shared(std::unique_ptr<Private> opened);

    QString address;
    std::weak_ptr<Connection> self; ///< held while it waits for its server: others may let it go meanwhile
    std::unique_ptr<Driver> driver;
    std::vector<Level> levels; ///< the outermost first
    Rollbacks rollbacks;
    quint64 writes = 0;
    KnownOrders orders;
    std::optional<KeptRows> kept; ///< of the last list that keeps its rows for the next

    /// The present owner's; null when it has none.
    const Level *ownLevel() const;
    /// Serial of the innermost transaction that the server holds as well, 0 for none: what is read in it may never come
    /// true. One that is begun later has the higher serial.
    quint64 startedSerial() const;
    /// That of the one around all others.
    quint64 outermostSerial() const { return levels.empty() ? 0 : levels.front().serial; }

    void ensureAlive(Driver::Asking asking);
    void beforeWrite();
    int write(const Command &statement, Then then = Then::GoOn);
    /// The next statement takes the commit of the one transaction along, where there is no other around it; CommitTrans()
    /// has to come at once.
    void commitBehindNext();
    void writeAll(std::span<const Command> statements);
    /// Reads a row that no other desk is to change.
    Command holding(const QString &table, const QString &key, qint32 value, const QString &also) const;
    /// A writing statement that answers with rows.
    CellTable readBack(const Command &statement);
    CellTable read(const Command &select);
    /// What the rows of a table are known by in this database; asked once.
    RowKey realKeyOf(const Table &table);
    void commitServer(const Level &level);
    void rollBackServer(const Level &level);

private:
    bool anyIn(Level::State state) const;
    void start(Level &level);
    void reconnect();
    bool reopened();
    bool mayComeBack() const;
    void noteLoss();
    Command savepoint(QStringView verb, const Level &level) const;
    template <typename Run>
    auto shielded(std::span<const Command> statements, Run run);
    CellTable shieldedRead(const Command &select);
    void undoStatement(const Driver::Guard &guard);

    QHash<QString, RowKey> realKeys_;
    bool foreign_ = false;      ///< a transaction that was begun past this layer was open at the last look
    QElapsedTimer unreachable_; ///< since the last attempt to reconnect failed
    QElapsedTimer lostSince_;   ///< since the first of them did
    bool reconnecting_ = false;
    std::optional<runtime::RuntimeError> whyUnreachable_;
};

/// Every open connection, for those that end what an event left open.
std::vector<Connection *> &openConnections();

/// A commit of what was never begun, or has ended by now.
[[noreturn]] void nothingToSave();

} // namespace ado
