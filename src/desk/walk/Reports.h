#pragma once

#include "desk/walk/Actor.h"

namespace walk {

/// Raises RuntimeError when a report's component cannot be had: the window would stop at a box that nobody answers.
void needReports();

/// Looks at every report of the statistics tab, which is in front, over the year, and leaves a picture of each.
void lookAtReports(Actor &actor, QWidget *saleWindow);

} // namespace walk
