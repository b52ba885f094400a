#pragma once

#include "platform/ado/Connection.h"
#include "platform/ado/Driver.h"
#include "platform/ado/RowKey.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>

#include <memory>
#include <optional>
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
    enum class Transaction {
        None,
        Pending, ///< begun, nothing written: the server knows nothing of it
        Started,
        Lost, ///< the server gave it up by itself; stays until somebody commits (an error) or rolls back
    };

    QString address;
    std::unique_ptr<Driver> driver;
    Transaction transaction = Transaction::None;
    quint64 serial = 0;
    Rollbacks rollbacks;

    /// Serial of the transaction that the server holds as well, 0 for none: what is read in it may never come true.
    quint64 startedSerial() const { return transaction == Transaction::Started ? serial : 0; }
    void ensureAlive(Driver::Asking asking);
    void beforeWrite();
    int write(const Command &statement);
    /// A writing statement that answers with rows.
    CellTable readBack(const Command &statement);
    CellTable read(const Command &select);
    /// What the rows of a table are known by in this database; asked once.
    RowKey realKeyOf(const Table &table);
    void rollBackServer();

private:
    void reconnect();
    void noteFailure();
    template <typename Run>
    auto shielded(const Command &statement, Run run);

    QHash<QString, RowKey> realKeys_;
    QElapsedTimer unreachable_; ///< since the last attempt to reconnect failed
    std::optional<runtime::RuntimeError> whyUnreachable_;
};

std::vector<Connection *> connectionsInTransaction();

} // namespace ado
