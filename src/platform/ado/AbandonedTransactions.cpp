#include "platform/ado/ConnectionPrivate.h"
#include "platform/runtime/Log.h"

#include <exception>

namespace ado {

namespace {

int handlers = 0; ///< at work, each inside the one before; they belong to the program's thread

} // namespace

int AbandonedTransactions::depth()
{
    return handlers;
}

AbandonedTransactions::AbandonedTransactions()
    : depth_(++handlers)
{
}

AbandonedTransactions::~AbandonedTransactions()
{
    try {
        rollBack();
    } catch (...) {
        runtime::trapped();
        // The server is gone and has rolled back itself; the next statement tells the user. Nothing may leave a destructor.
    }
    --handlers;
}

void AbandonedTransactions::rollBack()
{
    std::exception_ptr first;
    const std::vector<Connection *> connections = openConnections(); // whoever is told of a rollback may open more
    for (Connection *connection : connections) {
        const auto &levels = connection->layer().levels;
        try {
            while (!levels.empty() && levels.back().depth >= depth_)
                connection->RollbackTrans();
        } catch (...) {
            if (first)
                runtime::trapped();
            else
                first = std::current_exception();
        }
    }
    if (first)
        std::rethrow_exception(first);
}

} // namespace ado
