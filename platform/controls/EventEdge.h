#pragma once

#include <QObject>

#include <functional>
#include <utility>

namespace controls {

/// The edge of an event handler. Runs the handler; an error that leaves it is shown in a box with its description, and
/// transactions that the handler began and left open are rolled back. The window and the host live on.
void runEvent(const std::function<void()> &handler);

/// Connects a signal to a handler that runs inside its own event edge.
template <typename Sender, typename Signal, typename Handler>
QMetaObject::Connection onEvent(Sender *sender, Signal signal, QObject *context, Handler handler)
{
    return QObject::connect(sender, signal, context, [handler = std::move(handler)](auto &&...args) {
        runEvent([&] { handler(args...); });
    });
}

} // namespace controls
