#pragma once

#include "platform/ado/Driver.h"
#include "platform/ado/PostgresAddress.h"
#include "platform/ado/PostgresRows.h"

#include <QElapsedTimer>

#include <deque>
#include <span>
#include <vector>

struct pg_conn;

namespace ado {

class Wait;

/// A PostgreSQL server, through its own interface: exact numerics, typed parameters and no value object in every cell. Every
/// text goes by the protocol that takes one statement a message, so that a second one is refused by the server itself. What the
/// layer sends around a statement goes with it, in one go.
class PostgresDriver : public Driver
{
public:
    explicit PostgresDriver(const PostgresParameters &parameters);
    ~PostgresDriver() override;

    Engine engine() const override { return Engine::PostgreSQL; }
    Dialect dialect() const override { return Dialect::PostgreSQL; }
    void *handle() override;
    Command command() const override { return Command(Command::Values::Numbered); }
    CellTable read(const Command &select) override;
    int write(const Command &statement) override;
    CellTable readWithin(const Guard &guard, const Command &select) override;
    int writeWithin(const Guard &guard, const Command &statement) override;
    void writeAllWithin(const Guard &guard, std::span<const Command> statements) override;
    void foresee(std::span<const Command> selects) override;
    void foreseeBehindCommit(std::span<const Command> selects) override
    {
        behindCommit_.assign(selects.begin(), selects.end());
    }
    void sendForeseen() override;
    std::optional<CellTable> cameFor(const Command &select) const override;
    bool isForeseen(const Command &select) const override;
    bool looksAhead() const override { return true; }
    /// Sent with the first statement, for each answer that is waited for costs the way to the server and back.
    void begin() override;
    bool commitBehindNext(bool wanted) override { return commitsBehindNext_ = wanted; }
    void commit() override;
    void rollback() override;
    bool holdsTransaction() const override;
    bool needsSavepoints() const override { return true; }
    bool alive(Asking asking) override;
    bool isAwaited() const override { return awaited_; }
    bool isFar() const override;

protected:
    void openSession() override;
    void closeSession() override;
    /// Null while there is none: the library takes that for a lost one.
    virtual pg_conn *session() const { return handle_; }
    void putReadingRight();

private:
    using Result = PostgresResult;
    using Bundle = std::vector<Command>; ///< of one that fails those behind it are not run
    using Results = std::vector<Result>;
    struct Foreseen
    {
        Command select;
        Result rows;
        bool onTheWay = false; ///< sent, and nobody waits for it yet
    };

    Result run(const Command &statement, const Guard *guard = nullptr);
    Result run(const QString &statement);
    Results commitWith(Bundle work);
    Result select(const Command &select, const Guard *guard = nullptr);
    bool isFresh() const;
    std::ptrdiff_t foreseenPlace(const Command &select) const;
    void settle();
    std::vector<Command> takeAhead(const Command &statement);
    void keepForeseen(std::vector<Command> selects, std::span<Results> answers, const Guard *guard);
    /// All in one go, each statement a message of its own; the first bundle alone, one statement after the other, where the
    /// session is not free for more. The answers of the bundles that were sent. A new session's settings go along.
    std::vector<Results> exchange(std::span<const Bundle> bundles);
    std::vector<Results> exchangeAll(std::span<const Bundle> bundles);
    void waited(qint64 milliseconds);
    void requireSettled(const Results &settings);
    std::vector<Results> exchangeInOneGo(std::span<const Bundle> bundles);
    /// How many statements of each bundle; a pipeline has been entered.
    std::vector<std::size_t> sendInOneGo(std::span<const Bundle> bundles);
    std::vector<Results> answersInOneGo(std::span<const std::size_t> sent);
    void leavePipeline();
    void takeWhatIsOnTheWay();
    Results oneAfterTheOther(const Bundle &bundle);
    bool send(const Command &statement);
    /// The answer to what was sent; null where the session is lost, or nobody waits for it any longer.
    Result answer();
    Results answers(std::size_t count, Wait &wait, bool &awaits);
    /// Until the server begins to answer, as long as somebody waits for it. False: the library waits for the rest.
    bool awaitAnswer(Wait &wait);
    static bool isDone(const pg_result *result);
    /// Raises what the server, or the library, said.
    void requireDone(const Results &results);
    static int rowsTouched(const Result &result);
    /// As the library takes them, the address's own behind ours.
    PostgresParameters asked() const;
    /// Whether the session still takes a literal for what the layer has taken it for: a statement can change its settings.
    bool readsAsTheLayer() const;

    static void notice(void *driver, const pg_result *message);

    const PostgresParameters parameters_;
    pg_conn *handle_ = nullptr;
    int lostAt_ = -1;               ///< place of the server, in the address's list, with which the last session was
    bool ending_ = false;           ///< the server said that it ends this session
    bool awaited_ = false;          ///< a statement is under way, or the dialling
    Bundle settings_;               ///< of the session, as long as nothing was sent
    std::vector<Command> ahead_;    ///< go with the next statement
    std::vector<Command> expected_; ///< go behind the next
    std::vector<Command> behindCommit_;
    std::deque<Foreseen> foreseen_; ///< came behind the last
    QElapsedTimer foreseenAt_;
    std::vector<std::size_t> onTheWay_; ///< of what was sent and is not waited for yet, outside of any transaction
    qint64 quickest_ = -1;              ///< of the session's waits, in milliseconds; its dialling is the first
    bool commitsBehindNext_ = false;
    Result earlyCommit_;   ///< the server's answer to a commit that was sent with the last statement before it
    bool settled_ = false; ///< nothing of the present transaction changes how a literal is read
    QString unsent_;       ///< why the library did not send the last one
};

} // namespace ado
