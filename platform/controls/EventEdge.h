#pragma once

#include <QObject>

#include <functional>
#include <utility>

namespace controls {

/// The edge of an event handler. Runs the handler; an error that leaves it is shown in a box with its description, and
/// transactions that the handler began and left open are rolled back. The window and the host live on.
void runEvent(const std::function<void()> &handler);

/// Whether a handler is still at work, perhaps in a box or a dialog that waits for the user.
bool eventIsRunning();

/// Marks the time of work that is no event handler, yet may open a box.
class EventScope
{
public:
    EventScope();
    ~EventScope();
    EventScope(const EventScope &) = delete;
    EventScope &operator=(const EventScope &) = delete;
};

/// What comes from outside while a handler is at work waits until the last one has ended, and then runs from the event
/// loop, inside an edge of its own, in the order of its coming.
void afterEvents(std::function<void()> work);
/// Whether something waits.
bool eventsWait();

/// Connects a signal to a handler that runs inside its own event edge.
template <typename Sender, typename Signal, typename Handler>
QMetaObject::Connection onEvent(Sender *sender, Signal signal, QObject *context, Handler handler)
{
    return QObject::connect(sender, signal, context, [handler = std::move(handler)](auto &&...args) {
        runEvent([&] { handler(args...); });
    });
}

} // namespace controls
