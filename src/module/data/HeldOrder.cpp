#include "data/HeldOrder.h"

#include "platform/ado/Transaction.h"

#include <optional>

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
    std::optional<ado::Transaction> own;
    if (!connection.inTransaction())
        own.emplace(connection);
    work();
    if (own)
        own->commit();
}

void onHeldOrder(ado::Connection &connection, qint32 lngOrdMPK, const std::function<void()> &work)
{
    inOneStep(connection, [&] {
        holdOrder(connection, lngOrdMPK);
        work();
    });
}
