#pragma once

#include "platform/ado/Driver.h"

struct pg_conn;
struct pg_result;

namespace ado {

/// A PostgreSQL server, opened by Qt and spoken to through the server's own interface: exact numerics, typed parameters
/// and no value object in every cell.
class PostgresDriver : public Driver
{
public:
    /// "USER[:PASSWORD]@HOST[:PORT]/DB[?option=value&...]"; HOST may be a percent-encoded socket folder.
    explicit PostgresDriver(const QString &address);

    Engine engine() const override { return Engine::PostgreSQL; }
    Dialect dialect() const override { return Dialect::PostgreSQL; }
    Command command() const override { return Command(Command::Values::Numbered); }
    CellTable read(const Command &select) override;
    int write(const Command &statement) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    bool holdsTransaction() const override;
    bool needsSavepoints() const override { return true; }
    bool alive(Asking asking) override;

protected:
    void prepareSession() override;
    void endSession() override { handle_ = nullptr; }

private:
    struct ResultDeleter
    {
        void operator()(pg_result *result) const;
    };
    using Result = std::unique_ptr<pg_result, ResultDeleter>;

    Result run(const Command &statement);
    void run(const char *statement);

    static void notice(void *driver, const pg_result *message);

    pg_conn *handle_ = nullptr; ///< null while there is no session: the library takes that for a lost one
    bool ending_ = false;       ///< the server said that it ends this session
};

} // namespace ado
