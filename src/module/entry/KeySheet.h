#pragma once

#include <QWidget>

/// Brings up the one list of all keys over the window, or to the front where it is up already; the window stays in use.
void showKeySheet(QWidget &window);
