#pragma once

#include "tests/support/Wire.h"
#include "trials/desk/Journal.h"

#include <QProcess>

#include <memory>
#include <vector>

class PostgresServer;

namespace trial {

/// What happens to desks and their server now and then, one after the other by turns. A file has no server: only a desk
/// that freezes.
class Faults
{
public:
    explicit Faults(PostgresServer *server);

    /// The address that leads through the faults.
    QString way(const QString &address) const;

    /// Lets the next fault happen and passes; returns what it was.
    QString next(const QProcess &someDesk);

    /// An operation that was refused while the server was away may have been saved, and the desk said so.
    void forgive(std::vector<std::vector<Deed>> &journals) const;

private:
    void away();
    void unanswered();
    void serverRestarts();

    PostgresServer *server_;
    std::unique_ptr<Wire> wire_;
    std::vector<std::pair<qint64, qint64>> lost_; ///< from when to when
    int count_ = 0;
};

} // namespace trial
