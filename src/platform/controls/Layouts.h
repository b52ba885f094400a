#pragma once

namespace controls {

/// Ends the layouts that have been asked for. Left to themselves each tells the one around it in a turn of its own, between which
/// all that is in it is painted; so behind this it is painted once.
void endLayouts();

} // namespace controls
