#include "platform/ado/ConnectionPrivate.h"
#include "platform/runtime/Log.h"

#include <algorithm>
#include <exception>

namespace ado {

struct AbandonedTransactions::Private
{
    std::vector<quint64> openBefore;
};

AbandonedTransactions::AbandonedTransactions()
    : d(std::make_unique<Private>())
{
    for (const Connection *connection : connectionsInTransaction())
        d->openBefore.push_back(connection->transactionSerial());
}

AbandonedTransactions::~AbandonedTransactions()
{
    try {
        rollBack();
    } catch (...) {
        runtime::trapped();
        // The server is gone and has rolled back itself; the next statement tells the user. Nothing may leave a destructor.
    }
}

void AbandonedTransactions::rollBack()
{
    std::exception_ptr first;
    for (Connection *connection : connectionsInTransaction()) {
        if (std::ranges::find(d->openBefore, connection->transactionSerial()) != d->openBefore.end())
            continue;
        try {
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
