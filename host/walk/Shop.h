#pragma once

#include "host/walk/Actor.h"

namespace walk {

/// The shop's own work on the tabs behind the sale: a new dealer, a new product, its first purchase with the stock it leaves,
/// the shop's data. Ends on the sale tab, where the new product stands on the list. Raises Astray where the window does not
/// follow.
void keepShopInWindow(Actor &actor, QWidget *saleWindow);

} // namespace walk
