#pragma once

#include "platform/ado/Connection.h"

namespace ado {

class Recordset;

/// A transaction as long as a scope: begun here, saved by commit(), undone by whatever else leaves the scope. Begun within
/// another of the same owner it joins that, as transactions are flat, and undoes the whole; another owner's it leaves alone.
///
/// A rollback that fails is told to nobody: what went before it is the error that tells something, and a server that
/// cannot be asked any more has rolled back by itself.
class Transaction
{
public:
    explicit Transaction(Connection &connection);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    /// Ends it, also when it fails.
    void commit();
    // The same with the last writing of it, for which a server far away is waited once. One that fails is undone alone, as
    // any other.
    void commitWith(const QString &statement);
    void commitWith(Recordset &edited); ///< its Update()
    /// Leaves it to whoever goes on with it.
    void leaveOpen() { ends_ = false; }

private:
    void requireOpen() const;

    const ConnectionPtr connection_;
    quint64 serial_; ///< of the transaction that it is or has joined, which somebody else may have ended
    bool ends_ = true;
};

} // namespace ado
