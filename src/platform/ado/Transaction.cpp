#include "platform/ado/Transaction.h"

#include "platform/runtime/Attempt.h"

namespace ado {

Transaction::Transaction(Connection &connection)
    : connection_(connection.shared_from_this())
{
    connection_->BeginTrans();
}

Transaction::~Transaction()
{
    runtime::Attempt undo;
    if (ends_)
        undo([this] { connection_->RollbackTrans(); });
}

void Transaction::commit()
{
    ends_ = false; // a commit that fails rolls back itself
    connection_->CommitTrans();
}

} // namespace ado
