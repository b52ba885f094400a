#include "trials/interleavings/Play.h"

#include <algorithm>
#include <bit>

namespace trial {

namespace {

constexpr int quiet = 2;         // milliseconds after which a silent desk may be waiting for a lock
constexpr int patience = 15'000; // more than any desk's patience

class Play
{
public:
    Play(Stage &stage, Desks &desks, const std::vector<int> &operations)
        : stage_(stage)
        , desks_(desks)
        , states_(operations.size())
    {
        stage_.putBack();
        played_.begunBefore.resize(operations.size());
        played_.told.resize(operations.size());
        for (std::size_t desk = 0; desk < operations.size(); ++desk)
            take(int(desk), desks_[desk].begin(operations[desk]));
    }

    Played run(const std::vector<int> &first, const std::function<void()> &afterStep)
    {
        for (std::size_t at = 0; !allEnded(); ++at) {
            const unsigned able = ableDesks();
            if (able == 0) {
                if (!letServerDecide())
                    return fail(QStringLiteral("every desk waits for another"));
                played_.deadlock = true;
                continue;
            }
            Choice choice{std::countr_zero(able), last_, able};
            if (last_ >= 0 && (able & (1U << last_)))
                choice.taken = last_;
            if (at < first.size())
                choice.taken = first[at];
            if (!(able & (1U << choice.taken)))
                return fail(QStringLiteral("the order is not the same when it is run again"));
            played_.choices.push_back(choice);
            step(choice.taken);
            if (afterStep)
                afterStep();
        }
        return std::move(played_);
    }

private:
    struct State
    {
        enum { Ready, WaitsForFile, WaitsForServer, Ended } is = Ready;
        QByteArray statement;
        bool inTransaction = false;
    };

    bool allEnded() const
    {
        return std::ranges::all_of(states_, [](const State &state) { return state.is == State::Ended; });
    }

    /// Those that can go: a file's lock is taken by whoever tries first when it is free, a server hands it on by itself.
    unsigned ableDesks() const
    {
        unsigned able = 0;
        for (std::size_t desk = 0; desk < states_.size(); ++desk) {
            bool locked = false;
            for (std::size_t other = 0; other < states_.size(); ++other)
                locked = locked || (other != desk && states_[other].inTransaction);
            if (states_[desk].is == State::Ready || (states_[desk].is == State::WaitsForFile && !locked))
                able |= 1U << desk;
        }
        return able;
    }

    void step(int desk)
    {
        note(desk, QStringLiteral("sends"));
        if (played_.firstToEnd < 0)
            played_.begunBefore[std::size_t(desk)] = true;
        last_ = desk;
        desks_[std::size_t(desk)].go();
        await(desk);
        // Whom the server let go on goes on to its next statement.
        for (std::size_t other = 0; other < states_.size(); ++other)
            if (states_[other].is == State::WaitsForServer && int(other) != desk)
                await(int(other));
    }

    /// Until the desk stands before its next statement, has ended, or waits.
    void await(int desk)
    {
        const DeskProcess &process = desks_[std::size_t(desk)];
        bool waited = states_[std::size_t(desk)].is == State::WaitsForServer;
        for (int passed = 0; passed < patience; passed += quiet) {
            const std::optional<Message> message = process.messageWithin(waited ? 0 : quiet);
            if (message)
                return take(desk, *message);
            if (process.serverProcess() != 0 && stage_.waits(process.serverProcess())) {
                if (states_[std::size_t(desk)].is != State::WaitsForServer)
                    note(desk, QStringLiteral("waits"));
                states_[std::size_t(desk)].is = State::WaitsForServer;
                return;
            }
            waited = false;
        }
        fail(QStringLiteral("a desk does not go on"));
        states_[std::size_t(desk)].is = State::Ended;
    }

    /// All of them wait: the server finds that by itself and refuses one.
    bool letServerDecide()
    {
        for (int passed = 0; passed < patience; passed += quiet) {
            for (std::size_t desk = 0; desk < states_.size(); ++desk) {
                if (states_[desk].is != State::WaitsForServer)
                    continue;
                if (const std::optional<Message> message = desks_[desk].messageWithin(quiet)) {
                    take(int(desk), *message);
                    return true;
                }
            }
        }
        return false;
    }

    void take(int desk, const Message &message)
    {
        State &state = states_[std::size_t(desk)];
        state.inTransaction = message.inTransaction;
        if (message.kind == Message::AtStatement) {
            state.is = State::Ready;
            state.statement = message.statement;
            return;
        }
        if (message.kind == Message::AtLock) {
            state.is = State::WaitsForFile;
            note(desk, QStringLiteral("waits"));
            return;
        }
        state.is = State::Ended;
        played_.told[std::size_t(desk)] = message.told;
        if (played_.firstToEnd < 0)
            played_.firstToEnd = desk;
        state.statement = message.told.text.toUtf8();
        note(desk, message.told.saved ? QStringLiteral("has saved") : QStringLiteral("is refused"));
    }

    void note(int desk, const QString &what)
    {
        played_.steps << QStringLiteral("%1 %2: %3")
                             .arg(desk + 1)
                             .arg(what, QString::fromUtf8(states_[std::size_t(desk)].statement));
    }

    Played fail(const QString &why)
    {
        played_.trouble = why;
        return played_;
    }

    Stage &stage_;
    Desks &desks_;
    std::vector<State> states_;
    Played played_;
    int last_ = -1;
};

} // namespace

Played play(Stage &stage, Desks &desks, const std::vector<int> &operations, const std::vector<int> &first,
            const std::function<void()> &afterStep)
{
    return Play(stage, desks, operations).run(first, afterStep);
}

} // namespace trial
