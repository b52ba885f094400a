#pragma once

#include "platform/ado/LentDatabase.h"
#include "platform/ado/PostgresDriver.h"

#include <memory>

namespace ado {

/// PostgreSQL in a session of the host's. It is told how texts are read, and to give up waiting for a lock; neither outlasts
/// the session.
class LentPostgresDriver : public PostgresDriver
{
public:
    explicit LentPostgresDriver(const LentDatabase &lent);
    ~LentPostgresDriver() override;

    bool isLent() const override { return true; }
    CellTable read(const Command &select) override;
    int write(const Command &statement) override;
    CellTable readWithin(const Guard &guard, const Command &select) override;
    int writeWithin(const Guard &guard, const Command &statement) override;
    void writeAllWithin(const Guard &guard, std::span<const Command> statements) override;
    bool alive(Asking asking) override { return session() && PostgresDriver::alive(asking); }

protected:
    void openSession() override;
    void closeSession() override;
    /// None when it is not the one that was set up here.
    pg_conn *session() const override;

private:
    /// The library would drop what the host has not fetched yet.
    void requireNothingUnderWay() const;

    const LentDatabase lent_;
    pg_conn *lentHandle_ = nullptr;
    std::shared_ptr<bool> closed_;
};

} // namespace ado
