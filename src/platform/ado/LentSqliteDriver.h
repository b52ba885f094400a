#pragma once

#include "platform/ado/LentDatabase.h"
#include "platform/ado/SqliteDriver.h"

#include <memory>

namespace ado {

/// The embedded engine in a session of the host's. What lies in the file (its way of logging) and what the host has set
/// (how long it waits, how surely it writes) stays; only LIKE is read as everywhere here.
class LentSqliteDriver : public SqliteDriver
{
public:
    explicit LentSqliteDriver(const LentDatabase &lent);
    ~LentSqliteDriver() override;

    bool isLent() const override { return true; }
    void *handle() override { return isOurs() ? handle_ : nullptr; }
    CellTable read(const Command &select) override;
    int write(const Command &statement) override;
    bool holdsTransaction() const override { return isOurs() && SqliteDriver::holdsTransaction(); }
    bool alive(Asking) override { return isOurs(); }

protected:
    void openSession() override;
    void closeSession() override;
    void requireSession() override;
    void keepLog() override {}

private:
    /// Whether the session that was set up here is still the open one.
    bool isOurs() const;

    const LentDatabase lent_;
    std::shared_ptr<bool> closed_;
};

} // namespace ado
