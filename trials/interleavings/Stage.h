#pragma once

#include "trials/interleavings/Rows.h"

#include <QTemporaryDir>

class PostgresServer;

namespace trial {

/// A clinic of a few rows that can be put back as it was in a moment, while desks have it open.
class Stage
{
public:
    /// In memory where the machine has a folder for that: nothing here is to outlast a power cut.
    explicit Stage(PostgresServer *server);

    const QString &address() const { return address_; }
    ado::Engine engine() const { return clinic_->engine(); }
    void putBack();
    Rows rows() const { return readRows(*clinic_); }
    /// Whether the server lets that session wait for a lock.
    bool waits(int serverProcess) const;
    /// What `desk --check` finds.
    QStringList violations() const;

private:
    void keepRows();
    void keepRowsOnServer();

    QTemporaryDir folder_;
    QString address_;
    ado::ConnectionPtr clinic_;
    QStringList putBack_; ///< statements, one after the other
};

} // namespace trial
