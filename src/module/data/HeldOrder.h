#pragma once

#include "platform/ado/Connection.h"

#include <functional>

/// Between begin and commit: whether the order is there; if so it stays, and no other desk writes to it, until the
/// transaction ends.
bool orderIsHeld(ado::Connection &connection, qint32 lngOrdMPK);

/// The same for what must not go on without the order: no line and no money goes to one that another desk deletes
/// meanwhile. Raises Conflict when it is gone.
void holdOrder(ado::Connection &connection, qint32 lngOrdMPK);

/// Runs the work in a transaction of its own unless one is under way. An error rolls back and goes on to the caller.
void inOneStep(ado::Connection &connection, const std::function<void()> &work);

/// Work on an order that is held, in one step.
void onHeldOrder(ado::Connection &connection, qint32 lngOrdMPK, const std::function<void()> &work);
