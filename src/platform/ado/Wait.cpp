#include "platform/ado/Wait.h"

#include "platform/ado/Waiting.h"

#include <QElapsedTimer>
#include <QThread>

#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <cerrno>
#include <poll.h>
#endif

#include <algorithm>
#include <utility>

namespace ado {

namespace {

constexpr int calm = 1000;  ///< ms in which nothing is shown
constexpr int oneLook = 40; ///< ms

Patience *patience = nullptr;
bool inWait = false; ///< what runs was let in
int waits = 0;       ///< each within the one before
enum class Stage { Calm, Shown, Still };
Stage stage = Stage::Calm; ///< of the outermost
QElapsedTimer since;

} // namespace

Patience::~Patience()
{
    if (patience == this)
        patience = nullptr;
}

void setPatience(Patience *wanted)
{
    patience = wanted;
}

bool serverIsAwaited()
{
    return inWait;
}

LetIn::LetIn()
    : before_(std::exchange(inWait, true))
{
}

LetIn::~LetIn()
{
    inWait = before_;
}

Wait::Wait()
    : outermost_(waits == 0)
    , alive_(patience && !inWait && (stage == Stage::Shown || patience->mayBegin()))
{
    ++waits;
    if (outermost_)
        since.start();
}

Wait::~Wait()
{
    --waits;
    if (!outermost_)
        return;
    if (std::exchange(stage, Stage::Calm) == Stage::Shown && patience)
        patience->end();
}

int Wait::moment() const
{
    if (!alive_ || stage == Stage::Still)
        return -1;
    return stage == Stage::Shown ? oneLook : std::max(calm - int(since.elapsed()), 0);
}

bool Wait::goOn()
{
    if (!alive_ || !patience || stage == Stage::Still || since.elapsed() < calm)
        return true;
    const LetIn underWait;
    if (stage == Stage::Calm)
        stage = patience->begin() ? Stage::Shown : Stage::Still;
    return stage == Stage::Still || patience->goOn();
}

bool Wait::pass(int milliseconds)
{
    QElapsedTimer passed;
    passed.start();
    while (passed.elapsed() < milliseconds) {
        QThread::msleep(oneLook);
        if (!goOn())
            return false;
    }
    return true;
}

bool waitForSocket(qintptr socket, int milliseconds)
{
#ifdef Q_OS_WIN
    WSAPOLLFD watched{SOCKET(socket), POLLRDNORM, 0};
    return WSAPoll(&watched, 1, milliseconds) != 0;
#else
    pollfd watched{int(socket), POLLIN, 0};
    const int came = ::poll(&watched, 1, milliseconds);
    return came > 0 || (came < 0 && errno != EINTR);
#endif
}

} // namespace ado
