#pragma once

#include <QObject>
#include <QWidget>

#include <functional>
#include <type_traits>
#include <utility>

namespace controls {

/// The edge of an event handler. Runs the handler; an error that leaves it is shown in a box with its description, and
/// transactions that the handler began and left open are rolled back. The window and the host live on. `source` is the
/// control in which the event happened, if it happened in one.
void runEvent(const std::function<void()> &handler, const QWidget *source = nullptr);

/// For the errors that reach no edge, as those of a slot that was connected plainly: they end the program, since the toolkit
/// cannot go on after them, but not without a word. From here on each goes to the log, and a box tells it first.
void tellStrayErrors();

/// Whether a handler of an event in the window, or in a dialog over it, is still at work: perhaps in a box or a dialog that
/// waits for the user. Handlers of other windows, the host's own for example, do not count.
bool eventRunsIn(const QWidget &window);

/// The same for handlers of any window, and of none.
bool eventRuns();

/// Marks the time of work that may open a box, as if it were a handler.
class EventScope
{
public:
    explicit EventScope(const QWidget *source = nullptr);
    ~EventScope();
    EventScope(const EventScope &) = delete;
    EventScope &operator=(const EventScope &) = delete;
};

/// While one lives, the boxes of failed handlers wait for the event loop: whoever called goes on with objects that may go
/// beneath a box.
class BoxesLater
{
public:
    BoxesLater();
    ~BoxesLater();
    BoxesLater(const BoxesLater &) = delete;
    BoxesLater &operator=(const BoxesLater &) = delete;
};

/// What must not come into the middle of a handler's work: runs from the event loop, inside an edge of its own, once `busy`
/// says no, which is asked whenever a handler has ended. Works run in the order of their coming.
void runWhenFree(std::function<bool()> busy, std::function<void()> work);
/// Whether such work waits.
bool workWaits();

/// Connects a signal to a handler that runs inside its own event edge.
template <typename Sender, typename Signal, typename Handler>
QMetaObject::Connection onEvent(Sender *sender, Signal signal, QObject *context, Handler handler)
{
    const QWidget *source = nullptr;
    if constexpr (std::is_base_of_v<QWidget, Sender>)
        source = sender;
    else
        source = qobject_cast<QWidget *>(context);
    return QObject::connect(sender, signal, context, [source, handler = std::move(handler)](auto &&...args) {
        runEvent([&] { handler(args...); }, source);
    });
}

} // namespace controls
