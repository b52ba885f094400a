#pragma once

#include "desk/walk/Actor.h"

namespace walk {

/// The road of one sale in the open sale window: two products chosen and added, the order's delivery written down, the
/// money taken, the receipts printed, later money settled, the reports looked at. Raises Astray where the window does not
/// follow.
void sellInWindow(Actor &actor, QWidget *saleWindow);

} // namespace walk
