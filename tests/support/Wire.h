#pragma once

#include <QTemporaryDir>

#include <atomic>
#include <mutex>
#include <string>
#include <thread>

class PostgresServer;

/// A wire between a desk and the PostgreSQL server of the tests. It can be cut at a chosen statement of the desk, also where
/// no test of the server's own could: between a statement's run and its answer. A thread of its own carries the bytes.
class Wire
{
public:
    Wire();
    explicit Wire(const PostgresServer &server);
    ~Wire();
    Wire(const Wire &) = delete;
    Wire &operator=(const Wire &) = delete;

    QString address(const QString &database) const; ///< "postgresql://..."

    enum class Moment {
        Before,     ///< the statement does not reach the server
        Unanswered, ///< it is run, and the desk never hears of it
    };
    enum class Then { Back, Away };
    /// Cuts at the given one, counted from 0, of the statements from now on that change or commit something. The server can
    /// be reached anew at once, or not until mend().
    void cutAtWriting(int statement, Moment moment, Then then = Then::Back);
    /// The same, and of all statements where `everything` is set.
    void cutAt(int statement, Moment moment, bool everything);
    bool wasCut() const { return cut_; }
    /// Cuts now; the server cannot be reached until mend().
    void takeAway();
    /// From now on nothing comes through, and nobody is told why; mend() lets it go on.
    void fallSilent() { silent_ = true; }
    /// Forgets a cut that did not happen yet; the server can be reached.
    void mend();

private:
    struct Line;
    void run();
    bool carry(Line &line);
    bool carryMessages(Line &line);

    std::mutex mutex_;
    int due_ = -1;            ///< the writing to cut at, -1 for none
    bool everything_ = false; ///< counts, not writings alone
    Moment moment_{};
    Then then_{};
    std::atomic<bool> cut_{false};
    std::atomic<bool> away_{false};
    std::atomic<bool> silent_{false};
    std::atomic<bool> ending_{false};
    QTemporaryDir folder_;
    std::string server_; ///< path of its socket
    int listener_ = -1;
    std::thread thread_;
};
