#pragma once

#include "platform/ado/Connection.h"

namespace copy {

/// In a transaction: the server leaves this session alone while the other database works, however long that takes.
void waitLong(ado::Connection &connection);

/// A clinic at one moment, in which no desk stands between a line and its order's total: whatever is read of it while the
/// object lives is of that moment.
class Snapshot
{
public:
    /// Raises RuntimeError when the desks leave no such moment.
    explicit Snapshot(ado::Connection &clinic);
    ~Snapshot();
    Snapshot(const Snapshot &) = delete;
    Snapshot &operator=(const Snapshot &) = delete;

    /// Raises RuntimeError when the server was lost meanwhile: what was read since is of other moments.
    void demandWhole();

private:
    void begin();
    void end();

    ado::Connection &clinic_;
    bool open_ = false;
};

} // namespace copy
