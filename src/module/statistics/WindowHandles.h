#pragma once

#include <QWidget>

/// Whether the number names a window that can be shown: a widget of this program or a window of the desktop's. The toolkit
/// itself takes any number on some desktops, and shows nothing.
bool namesAWindow(WId handle);
