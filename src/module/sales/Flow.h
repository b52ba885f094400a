#pragma once

#include "platform/ado/Transaction.h"
#include "platform/runtime/Log.h"
#include "sales/OrderOperations.h"
#include "session/modGlobalVars.h"

#include <utility>

/// What the flows of a sale have in common.
namespace flow {

/// The host's connection; raises ObjectClosed when there is none.
inline ado::ConnectionPtr &masterDB()
{
    if (!gcnnMasterDB)
        throw runtime::RuntimeError(runtime::ErrorNumber::ObjectClosed,
                                    QStringLiteral("데이터베이스에 연결되어 있지 않습니다."));
    return gcnnMasterDB;
}

/// The recordset; raises ObjectClosed when it is not open.
inline ado::Recordset &opened(const SaleSession::RecordsetPtr &recordset)
{
    if (!recordset || !recordset->isOpen())
        throw runtime::RuntimeError(runtime::ErrorNumber::ObjectClosed, QStringLiteral("목록이 열려 있지 않습니다."));
    return *recordset;
}

/// Work between begin and commit; an error rolls back and goes on to the caller.
template <typename Work>
void inTransaction(Work &&work)
{
    const ado::ConnectionPtr connection = masterDB();
    ado::Transaction transaction(*connection);
    work(*connection);
    transaction.commit();
}

inline Outcome outcomeOf(const runtime::RuntimeError &error)
{
    return error.number() == runtime::ErrorNumber::Conflict ? Outcome::Conflict : Outcome::Failed;
}

/// Runs a flow; an error becomes its outcome.
template <typename Work>
Outcome trapped(Work &&work)
{
    try {
        return std::forward<Work>(work)();
    } catch (const runtime::RuntimeError &error) {
        runtime::trapped();
        return outcomeOf(error);
    }
}

} // namespace flow
