#pragma once

#include "platform/ado/Connection.h"

#include <functional>

/// Between begin and commit: makes sure that the order is there and stays until the transaction ends, so that no line and
/// no money goes to an order that another desk deletes meanwhile. Raises Conflict when it is gone.
void holdOrder(ado::Connection &connection, qint32 lngOrdMPK);

/// Work on an order that is held, in a transaction of its own unless one is under way. An error rolls back and goes on to
/// the caller.
void onHeldOrder(ado::Connection &connection, qint32 lngOrdMPK, const std::function<void()> &work);
