#include "platform/controls/EventEdge.h"

#include "platform/ado/Connection.h"
#include "platform/ado/Waiting.h"
#include "platform/controls/MessageBox.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/Operation.h"
#include "platform/runtime/RuntimeError.h"

#include <QApplication>
#include <QMetaObject>
#include <QPointer>
#include <QThread>

#include <algorithm>
#include <deque>
#include <exception>
#include <new>
#include <optional>
#include <utility>
#include <vector>

namespace controls {

namespace {

/// Where handlers are at work, the innermost last.
std::vector<QPointer<const QWidget>> &running()
{
    static std::vector<QPointer<const QWidget>> sources;
    return sources;
}

int boxesWait = 0;

struct WaitingWork
{
    std::function<bool()> busy;
    std::function<void()> run;
};

std::deque<WaitingWork> &waiting()
{
    static std::deque<WaitingWork> works;
    return works;
}

void runWaiting()
{
    // One at a time: each may open a box, and then the next waits for its end.
    if (waiting().empty() || ado::serverIsAwaited() || waiting().front().busy())
        return;
    const WaitingWork next = std::move(waiting().front());
    waiting().pop_front();
    runEvent(next.run);
}

/// From the event loop: whoever has just ended may still stand on objects that the work takes away.
void runWaitingSoon()
{
    if (!waiting().empty() && qApp)
        QMetaObject::invokeMethod(qApp, &runWaiting, Qt::QueuedConnection);
}

/// Runs a step; what left it as an error comes back as a text for the user.
std::optional<QString> failureOf(const std::function<void()> &step)
{
    try {
        step();
        return std::nullopt;
    } catch (const runtime::RuntimeError &error) {
        runtime::trapped();
        return error.description();
    } catch (const std::bad_alloc &) {
        runtime::trapped();
        return QStringLiteral("메모리가 부족합니다.");
    } catch (const std::exception &error) {
        runtime::trapped();
        return QStringLiteral("프로그램 오류입니다. 개발사로 문의하십시오.\n(%1)").arg(QString::fromUtf8(error.what()));
    } catch (...) {
        runtime::trapped();
        return QStringLiteral("프로그램 오류입니다. 개발사로 문의하십시오.");
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

std::terminate_handler endOfProgram = nullptr; ///< that was there before

/// Runs where nobody catches the error, with its thrower's objects still in place.
void tellAndEnd()
{
    static bool telling = false; // another may come while the box stands
    if (std::current_exception() && !std::exchange(telling, true)) {
        const QString text = failureOf([] { std::rethrow_exception(std::current_exception()); }).value_or(QString());
        if (qobject_cast<QApplication *>(qApp) && QThread::currentThread() == qApp->thread())
            MsgBox(text
                       + QStringLiteral(
                           "\n\n프로그램을 종료합니다. 다시 시작한 뒤 마지막 내용이 저장되었는지 확인하십시오."),
                   WarningIcon);
    }
    endOfProgram();
}

} // namespace

EventScope::EventScope(const QWidget *source)
{
    running().emplace_back(source);
}

EventScope::~EventScope()
{
    running().pop_back();
    runWaitingSoon();
}

BoxesLater::BoxesLater()
{
    ++boxesWait;
}

BoxesLater::~BoxesLater()
{
    --boxesWait;
}

bool eventRunsIn(const QWidget &window)
{
    return std::ranges::any_of(running(), [&](const QWidget *source) {
        while (source && source != &window)
            source = source->parentWidget();
        return source != nullptr;
    });
}

bool eventRuns()
{
    return !running().empty();
}

void runWhenFree(std::function<bool()> busy, std::function<void()> work)
{
    waiting().push_back({std::move(busy), std::move(work)});
    runWaitingSoon();
}

bool workWaits()
{
    return !waiting().empty();
}

void tellStrayErrors()
{
    if (!endOfProgram)
        endOfProgram = std::set_terminate(&tellAndEnd);
}

void runEvent(const std::function<void()> &handler, const QWidget *source)
{
    const EventScope scope(source);
    const runtime::Operation operation(source ? source->objectName() : QString());
    const std::optional<QString> failure = runGuarded(handler);
    if (!failure || ado::serverIsAwaited()) // nobody asked for what only came in under a wait
        return;
    if (boxesWait > 0)
        runWhenFree([] { return false; }, [text = *failure] { MsgBox(text, WarningIcon); });
    else
        MsgBox(*failure, WarningIcon);
}

} // namespace controls
