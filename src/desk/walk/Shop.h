#pragma once

#include "desk/walk/Actor.h"

namespace walk {

/// A shop set up from nothing in a window whose lists are empty: a dealer, a product, its first purchase with the stock it
/// leaves, the shop's data and logo. Then the first sale from it, its receipt on the roll (first-roll.pdf in the folder) and
/// the stock that is left. Raises Astray where the window does not follow.
void openShopInWindow(Actor &actor, QWidget *saleWindow);

} // namespace walk
