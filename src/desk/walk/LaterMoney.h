#pragma once

#include "desk/walk/Actor.h"

namespace walk {

/// What becomes of the order later: a second payment by card, a line taken back, the outstanding rest collected, and the
/// money for the returned line paid out. The order just sold is the first of the list. Raises Astray.
void settleLater(Actor &actor, QWidget *saleWindow);

} // namespace walk
