#pragma once

#include <QApplication>
#include <QWidget>

namespace desk {

/// Style, Korean fonts and the Korean captions of standard buttons, for every window of the process.
void dressUp(QApplication &application);

/// Gives a window that is not shown yet this size, or what its screen has room for.
void resizeWithinScreen(QWidget &window, const QSize &wished);

} // namespace desk
