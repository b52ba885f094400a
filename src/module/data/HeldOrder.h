#pragma once

#include "platform/ado/Foresight.h"
#include "session/ShownOrder.h"

#include <functional>

/// Locks the order's row, so that no other desk changes or deletes it before the transaction ends; call it within one.
/// False when there is no such order.
bool orderIsHeld(ado::Connection &connection, qint32 lngOrdMPK);

/// The same, but raises Conflict when the order is gone, is not the one that was shown, or when a backup was restored since:
/// lines and money must not go to a deleted order, nor to another patient's.
void holdOrder(ado::Connection &connection, const ShownOrder &order);

/// Lock a row of a held order in the same way; Conflict when it is gone or belongs to another order by now.
void holdLine(ado::Connection &connection, LineKey line, OrderKey order);
void tellLineHeld(ado::Foresight &next, LineKey line, OrderKey order); ///< goes with the lock before it
void holdLedgerRow(ado::Connection &connection, LedgerKey row, const ShownOrder &order);

/// Locks the product's row, so that it cannot be deleted before the line that sells it is saved. False when it is gone.
bool productIsHeld(ado::Connection &connection, ProductKey product);
void tellProductHeld(ado::Foresight &next, ProductKey product); ///< goes with the lock before it
/// The same for the dealer that a purchase names.
bool dealerIsHeld(ado::Connection &connection, DealerKey dealer);

/// Runs `work` in the open transaction, else in one of its own, which an error rolls back. The error is rethrown.
void inOneStep(ado::Connection &connection, const std::function<void()> &work);

/// inOneStep() with the order held.
void onHeldOrder(ado::Connection &connection, const ShownOrder &order, const std::function<void()> &work);
