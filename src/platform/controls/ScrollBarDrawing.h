#pragma once

#include <QStyleOptionSlider>

class QPainter;

namespace controls {

/// A flat one, in the style's own places. Fusion shades each bar and has the strips of it painted by other threads, which
/// takes a fifth of a window's painting.
void drawScrollBar(QPainter *painter, const QStyle &style, const QStyleOptionSlider &bar, const QWidget *widget);

} // namespace controls
