#pragma once

#include <QApplication>

namespace desk {

/// Style, Korean fonts and the Korean captions of standard buttons, for every window of the process.
void dressUp(QApplication &application);

} // namespace desk
