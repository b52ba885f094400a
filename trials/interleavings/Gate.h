#pragma once

#include "platform/ado/Connection.h"

#include <QByteArray>

#include <functional>

/// Stops the desk of this process before each statement that it sends, past the module, which knows nothing of it. What
/// begins a transaction on a server, or only guards the next statement there, is sent with that. What a desk would send in one
/// go it sends one by one here: the server, too, lets other desks in between.
namespace trial::gate {

enum class Stop : char {
    Statement = 'S', ///< about to be sent
    Lock = 'L',      ///< the embedded engine found the file locked, and will try again
};
using Pause = std::function<void(Stop stop, const QByteArray &statement, bool inTransaction)>;

/// The session whose statements are watched from now on.
void watch(const ado::Connection &connection);
/// What is called at each stop; nothing stops while it is empty.
void setPause(Pause pause);
/// The server's number for the session, 0 for a file.
int serverProcess(const ado::Connection &connection);

} // namespace trial::gate
