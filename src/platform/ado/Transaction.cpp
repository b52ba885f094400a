#include "platform/ado/Transaction.h"

#include "platform/ado/ConnectionPrivate.h"
#include "platform/ado/Recordset.h"
#include "platform/runtime/Attempt.h"

namespace ado {

Transaction::Transaction(Connection &connection)
    : connection_(connection.shared_from_this())
    , serial_(0)
{
    connection_->BeginTrans();
    serial_ = connection_->transactionSerial();
}

Transaction::~Transaction()
{
    runtime::Attempt undo;
    if (ends_ && connection_->transactionSerial() == serial_)
        undo([this] { connection_->RollbackTrans(); });
}

void Transaction::requireOpen() const
{
    if (connection_->transactionSerial() != serial_)
        nothingToSave();
}

void Transaction::commit()
{
    ends_ = false; // a commit that fails rolls back itself
    requireOpen();
    connection_->CommitTrans();
}

void Transaction::commitWith(const QString &statement)
{
    requireOpen();
    connection_->Execute(statement, Then::Commit);
    ends_ = false;
}

void Transaction::commitWith(Recordset &edited)
{
    requireOpen();
    edited.Update(Then::Commit);
    ends_ = false;
}

} // namespace ado
