#pragma once

#include <QtGlobal>

namespace ado {

/// One wait for a server, from its beginning to the answer. One within another belongs to that: the dialling to the statement
/// that found the server gone.
class Wait
{
public:
    Wait();
    ~Wait();
    Wait(const Wait &) = delete;
    Wait &operator=(const Wait &) = delete;

    /// Whether there is something to do meanwhile; else the wait may as well stand still.
    bool isAlive() const { return alive_; }
    /// So long may be stood still before goOn(), in milliseconds; -1 is for ever.
    int moment() const;
    /// After a moment in which nothing came. False: the wait is given up.
    bool goOn();
    /// Lets so much time pass.
    bool pass(int milliseconds);

private:
    const bool outermost_;
    const bool alive_;
};

/// What runs while it stands was let in under a wait.
class LetIn
{
public:
    LetIn();
    ~LetIn();
    LetIn(const LetIn &) = delete;
    LetIn &operator=(const LetIn &) = delete;

private:
    const bool before_;
};

/// What is to be done while an answer travels: by whoever has sent a statement, before it looks for the answer.
void doMeanwhile();

/// Whether the socket has something to read, or is gone, within the time.
bool waitForSocket(qintptr socket, int milliseconds);

} // namespace ado
