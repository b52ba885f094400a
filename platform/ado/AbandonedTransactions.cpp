#include "platform/ado/ConnectionPrivate.h"

#include "platform/runtime/RuntimeError.h"

#include <algorithm>

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
    } catch (const runtime::RuntimeError &) {
        // The server is gone and has rolled back itself; the next statement tells the user.
    }
}

void AbandonedTransactions::rollBack()
{
    for (Connection *connection : connectionsInTransaction()) {
        if (std::ranges::find(d->openBefore, connection->transactionSerial()) == d->openBefore.end())
            connection->RollbackTrans();
    }
}

} // namespace ado
