#include "trials/soak/Faults.h"

#include "tests/support/PostgresServer.h"

#include <QThread>
#include <QUrl>

#include <algorithm>
#include <csignal>

namespace trial {

namespace {

constexpr qint64 dialled = 3'000'000; ///< microseconds until every desk has noticed and is connected anew

/// Shorter than a desk waits for a lock: the others must notice nothing.
void freeze(const QProcess &desk)
{
    ::kill(pid_t(desk.processId()), SIGSTOP);
    QThread::sleep(3);
    ::kill(pid_t(desk.processId()), SIGCONT);
}

} // namespace

Faults::Faults(PostgresServer *server)
    : server_(server)
    , wire_(server ? std::make_unique<Wire>(*server) : nullptr)
{
}

QString Faults::way(const QString &address) const
{
    return wire_ ? wire_->address(QUrl(address).path().mid(1)) : address;
}

QString Faults::next(const QProcess &someDesk)
{
    struct Fault
    {
        const char *name;
        void (Faults::*happens)();
    };
    static constexpr Fault faults[] = {{"server away", &Faults::away},
                                       {"answer lost", &Faults::unanswered},
                                       {"server restarted", &Faults::serverRestarts},
                                       {"desk frozen", nullptr}};
    const Fault &fault = wire_ ? faults[count_++ % std::size(faults)] : faults[3];
    if (!fault.happens) {
        freeze(someDesk);
        return QLatin1String(fault.name);
    }
    const qint64 from = now();
    (this->*fault.happens)();
    lost_.push_back({from, now() + dialled});
    return QLatin1String(fault.name);
}

void Faults::away()
{
    wire_->takeAway();
    QThread::sleep(3);
    wire_->mend();
}

void Faults::unanswered()
{
    wire_->cutAtWriting(count_ % 7, Wire::Moment::Unanswered);
    for (int waited = 0; waited < 300 && !wire_->wasCut(); ++waited)
        QThread::msleep(10);
    wire_->mend();
}

void Faults::serverRestarts()
{
    server_->stop();
    server_->start();
}

void Faults::forgive(std::vector<std::vector<Deed>> &journals) const
{
    for (auto &journal : journals) {
        for (Deed &deed : journal) {
            const auto overlaps = [&](const auto &lost) { return deed.begun < lost.second && deed.ended > lost.first; };
            if (deed.state == State::Refused && std::any_of(lost_.begin(), lost_.end(), overlaps))
                deed.state = State::Open;
        }
    }
}

} // namespace trial
