#pragma once

#include "desk/walk/Actor.h"

namespace walk {

/// Raises RuntimeError when a report's component cannot be had: the window would stop at a box that nobody answers.
void needReports();

/// Looks at every report of the statistics tab, which is in front, over the year, counts the drawer where that is asked, and
/// leaves a picture and the printed sheet of each (report-1.pdf, ...).
void lookAtReports(Actor &actor, QWidget *saleWindow);

} // namespace walk
