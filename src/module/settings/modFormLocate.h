#pragma once

#include <QSplitter>
#include <QWidget>

/// Remembers place, size, state and column widths of the main window for this user and machine. Without columns (their page
/// was never on the screen, so they have no widths of their own) the stored widths stay.
void saveMainWindowLayout(const QWidget &window, const QSplitter *columns);
/// Follows where the window stands while it is neither maximized nor minimized, for saveMainWindowLayout(); once a window,
/// when it is first shown.
void watchNormalPlace(QWidget &window);
/// Brings them back. What is not stored, or is no number, leaves the window as it is; a place off the screen is moved in, a
/// size beyond the screen is cut. A window saved while minimized comes back as it was before; one that is maximized now
/// stays so.
void restoreMainWindowLayout(QWidget &window, QSplitter &columns);
/// Moves a window that hangs over an edge of its screen back onto it. Left and top win over right and bottom: the caption
/// has to stay within reach.
void keepOnScreen(QWidget &window);
