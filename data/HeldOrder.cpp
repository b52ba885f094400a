#include "data/HeldOrder.h"

#include "platform/runtime/Attempt.h"

void holdOrder(ado::Connection &connection, qint32 lngOrdMPK)
{
    if (!connection.holdRow(QStringLiteral("tPSOrderMaster"), QStringLiteral("OrdM_PK"), lngOrdMPK))
        throw runtime::RuntimeError(runtime::ErrorNumber::Conflict, QStringLiteral("다른 창구에서 삭제한 거래입니다."));
}

void onHeldOrder(ado::Connection &connection, qint32 lngOrdMPK, const std::function<void()> &work)
{
    const bool own = !connection.inTransaction();
    if (own)
        connection.BeginTrans();
    try {
        holdOrder(connection, lngOrdMPK);
        work();
        if (own)
            connection.CommitTrans();
    } catch (const runtime::RuntimeError &) {
        runtime::Attempt undo; // the first error is the one that tells something
        if (own)
            undo([&] { connection.RollbackTrans(); });
        throw;
    }
}
