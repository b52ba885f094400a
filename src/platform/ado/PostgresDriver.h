#pragma once

#include "platform/ado/Driver.h"
#include "platform/ado/PostgresAddress.h"

struct pg_conn;
struct pg_result;

namespace ado {

/// A PostgreSQL server, through its own interface: exact numerics, typed parameters and no value object in every cell. Every
/// text goes by the protocol that takes one statement a message, so that a second one is refused by the server itself.
class PostgresDriver : public Driver
{
public:
    explicit PostgresDriver(const PostgresParameters &parameters);
    ~PostgresDriver() override;

    Engine engine() const override { return Engine::PostgreSQL; }
    Dialect dialect() const override { return Dialect::PostgreSQL; }
    void *handle() const override { return session(); }
    Command command() const override { return Command(Command::Values::Numbered); }
    CellTable read(const Command &select) override;
    int write(const Command &statement) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    bool holdsTransaction() const override;
    bool needsSavepoints() const override { return true; }
    bool alive(Asking asking) override;
    bool isAwaited() const override { return awaited_; }

protected:
    void openSession() override;
    void closeSession() override;
    /// Null while there is none: the library takes that for a lost one.
    virtual pg_conn *session() const { return handle_; }
    void putReadingRight();

private:
    struct ResultDeleter
    {
        void operator()(pg_result *result) const;
    };
    using Result = std::unique_ptr<pg_result, ResultDeleter>;

    Result run(const Command &statement);
    Result run(const QString &statement);
    /// The answer to what was sent; null where the session is lost, or nobody waits for it any longer.
    Result answer();
    /// Until the server begins to answer, as long as somebody waits for it.
    void awaitAnswer();
    /// As the library takes them, the address's own behind ours.
    PostgresParameters asked() const;
    /// Whether the session still takes a literal for what the layer has taken it for: a statement can change its settings.
    bool readsAsTheLayer() const;

    static void notice(void *driver, const pg_result *message);

    const PostgresParameters parameters_;
    pg_conn *handle_ = nullptr;
    int lostAt_ = -1;      ///< place of the server, in the address's list, with which the last session was
    bool ending_ = false;  ///< the server said that it ends this session
    bool awaited_ = false; ///< a statement is under way, or the dialling
};

} // namespace ado
