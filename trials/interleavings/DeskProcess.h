#pragma once

#include "trials/interleavings/Channel.h"

#include <QString>

#include <utility>

namespace trial {

/// How a desk ended its operation.
struct Told
{
    bool saved = false;
    int error = 0; ///< number of the error that left the operation, 0 for none
    QString text;  ///< its text
};

/// What a desk does now.
struct Message
{
    enum Kind : char { AtStatement = 'S', AtLock = 'L', Ended = 'E' } kind = Ended;
    bool inTransaction = false;
    QByteArray statement;
    Told told;
};

/// A desk without a screen in a process of its own, which another one leads from statement to statement.
class DeskProcess
{
public:
    /// Begins the process; call it before anything of the toolkit was made.
    DeskProcess();
    ~DeskProcess();
    DeskProcess(const DeskProcess &) = delete;
    DeskProcess &operator=(const DeskProcess &) = delete;

    void open(const QString &address);
    /// The server's number for its session.
    int serverProcess() const { return serverProcess_; }

    /// Reads what the window shows and comes up to the operation's first statement.
    Message begin(int operation) const;
    /// Sends the statement that it stands before.
    void go() const;
    /// Nothing when it says nothing for so long, as when its server lets it wait.
    std::optional<Message> messageWithin(int milliseconds) const;

private:
    explicit DeskProcess(std::pair<int, int> sockets);

    Channel channel_;
    int process_ = 0;
    int serverProcess_ = 0;
};

} // namespace trial
