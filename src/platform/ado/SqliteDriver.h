#pragma once

#include "platform/ado/Driver.h"
#include "platform/ado/PreparedStatements.h"

struct sqlite3;

namespace ado {

/// The embedded engine, through its own interface: it is the default of a small clinic and must not pay for a value
/// object in every cell.
class SqliteDriver : public Driver
{
public:
    SqliteDriver(const QString &file, bool create);

    Engine engine() const override { return Engine::SQLite; }
    Dialect dialect() const override { return Dialect::SQLite; }
    Command command() const override { return Command(Command::Values::Marked); }
    CellTable read(const Command &select) override;
    int write(const Command &statement) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    bool holdsTransaction() const override;
    bool alive(Asking) override { return handle_ != nullptr; }

protected:
    void prepareSession() override;
    void endSession() override;

private:
    void run(const char *statement);
    /// The engine takes no null handle.
    void requireSession() const;

    sqlite3 *handle_ = nullptr; ///< null while there is no session
    PreparedStatements prepared_;
};

} // namespace ado
