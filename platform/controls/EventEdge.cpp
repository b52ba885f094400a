#include "platform/controls/EventEdge.h"

#include "platform/ado/Connection.h"
#include "platform/controls/MessageBox.h"
#include "platform/runtime/RuntimeError.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <deque>
#include <new>
#include <optional>
#include <utility>

namespace controls {

namespace {

int running = 0;

std::deque<std::function<void()>> &waiting()
{
    static std::deque<std::function<void()>> works;
    return works;
}

void runWaiting()
{
    // One at a time: each may open a box, and then the next waits for its end.
    if (running > 0 || waiting().empty())
        return;
    const std::function<void()> work = std::move(waiting().front());
    waiting().pop_front();
    runEvent(work);
}

/// From the event loop: whoever has just ended may still stand on objects that the work takes away.
void runWaitingSoon()
{
    if (running == 0 && !waiting().empty() && qApp)
        QMetaObject::invokeMethod(qApp, &runWaiting, Qt::QueuedConnection);
}

/// Runs a step; what left it as an error comes back as a text for the user.
std::optional<QString> failureOf(const std::function<void()> &step)
{
    try {
        step();
        return std::nullopt;
    } catch (const runtime::RuntimeError &error) {
        return error.description();
    } catch (const std::bad_alloc &) {
        return QStringLiteral("메모리가 부족합니다.");
    } catch (const std::exception &error) {
        return QStringLiteral("내부 오류가 발생했습니다.\n(%1)").arg(QString::fromUtf8(error.what()));
    } catch (...) {
        return QStringLiteral("내부 오류가 발생했습니다.");
    }
}

/// The rollback is over before the box opens its own event loop: nothing may stay locked while somebody reads.
std::optional<QString> runGuarded(const std::function<void()> &handler)
{
    ado::AbandonedTransactions abandoned;
    std::optional<QString> failure = failureOf(handler);
    const std::optional<QString> rollbackFailure = failureOf([&] { abandoned.rollBack(); });
    return failure ? failure : rollbackFailure;
}

} // namespace

EventScope::EventScope()
{
    ++running;
}

EventScope::~EventScope()
{
    --running;
    runWaitingSoon();
}

bool eventIsRunning()
{
    return running > 0;
}

void afterEvents(std::function<void()> work)
{
    waiting().push_back(std::move(work));
    runWaitingSoon();
}

bool eventsWait()
{
    return !waiting().empty();
}

void runEvent(const std::function<void()> &handler)
{
    const EventScope scope;
    if (const std::optional<QString> failure = runGuarded(handler))
        MsgBox(*failure, WarningIcon);
}

} // namespace controls
