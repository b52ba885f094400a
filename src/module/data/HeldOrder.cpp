#include "data/HeldOrder.h"

#include "platform/runtime/Attempt.h"

bool orderIsHeld(ado::Connection &connection, qint32 lngOrdMPK)
{
    return connection.holdRow(QStringLiteral("tPSOrderMaster"), QStringLiteral("OrdM_PK"), lngOrdMPK);
}

void holdOrder(ado::Connection &connection, qint32 lngOrdMPK)
{
    if (!orderIsHeld(connection, lngOrdMPK))
        ado::raiseConflict();
}

void inOneStep(ado::Connection &connection, const std::function<void()> &work)
{
    const bool own = !connection.inTransaction();
    if (own)
        connection.BeginTrans();
    try {
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

void onHeldOrder(ado::Connection &connection, qint32 lngOrdMPK, const std::function<void()> &work)
{
    inOneStep(connection, [&] {
        holdOrder(connection, lngOrdMPK);
        work();
    });
}
