#pragma once

#include <QPoint>
#include <QWidget>

/// Tells where things stand on the screen. Pixels are the toolkit's own, which a scaled screen does not change; twips are
/// 1/1440 inch by the screen that the window is on.
class clsWindowPostion
{
public:
    /// Position of the mouse pointer, in pixels.
    void GetCursorPosition(qint32 &x, qint32 &y) const;
    /// Screen position of the upper left corner of a window's or control's inner area, in twips.
    void GetScreenPosition(const QWidget &window, qint32 &x, qint32 &y) const;
    /// The same by a window handle. False, with x and y 0, for a handle that is none of this program's windows.
    bool GetScreenPosition(WId window, qint32 &x, qint32 &y) const;

    /// A distance or a place in twips as pixels of the screen that `window` is on.
    QPoint pixelsFromTwips(const QWidget &window, qint32 x, qint32 y) const;
};
