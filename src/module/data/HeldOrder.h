#pragma once

#include "platform/ado/Connection.h"

#include <functional>

/// Locks the order's row, so that no other desk changes or deletes it before the transaction ends; call it within one.
/// False when there is no such order.
bool orderIsHeld(ado::Connection &connection, qint32 lngOrdMPK);

/// The same, but raises Conflict when the order is gone: lines and money must not go to a deleted order.
void holdOrder(ado::Connection &connection, qint32 lngOrdMPK);

/// Runs `work` in the open transaction, else in one of its own, which an error rolls back. The error is rethrown.
void inOneStep(ado::Connection &connection, const std::function<void()> &work);

/// inOneStep() with the order held.
void onHeldOrder(ado::Connection &connection, qint32 lngOrdMPK, const std::function<void()> &work);
