#include "products/RecordSave.h"

#include "platform/ado/Transaction.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Log.h"
#include "session/modGlobalVars.h"

#include <algorithm>
#include <limits>

SaveOutcome saveTrapped(ado::Recordset &rows, const std::function<SaveOutcome()> &work)
{
    const ado::ConnectionPtr connection = gcnnMasterDB;
    if (!connection)
        return SaveOutcome::Failed;
    try {
        ado::Transaction transaction(*connection);
        if (work() == SaveOutcome::Refused) {
            transaction.leaveOpen();
            return SaveOutcome::Refused;
        }
        transaction.commit();
        return SaveOutcome::Saved;
    } catch (const runtime::RuntimeError &) {
        runtime::trapped();
        runtime::Attempt undo;
        undo([&] { rows.CancelUpdate(); });
        return SaveOutcome::Failed;
    }
}

qint16 countOf(const ado::ConnectionPtr &connection, const QString &statement, const QString &field, qint16 ifEmpty)
{
    ado::Recordset rows;
    rows.Open(statement, connection, ado::CursorType::Static, ado::LockType::ReadOnly);
    if (!rows.hasCurrent())
        return ifEmpty;
    constexpr qint32 most = std::numeric_limits<qint16>::max();
    return qint16(std::min(runtime::CLng(rows[field]), most));
}
