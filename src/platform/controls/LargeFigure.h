#pragma once

#include <QFont>
#include <QLineEdit>

namespace controls {

/// The font, made smaller where the text would be wider than `room` pixels; never below six tenths.
QFont fontThatFits(QFont font, const QString &text, int room);

/// Shows the box's text bold and `factor` times as large, to be read from a step away. A text that is too wide for the box
/// is drawn smaller, not cut; the box keeps its height.
void showLarge(QLineEdit *box, double factor);
/// The same font for what always has its room.
QFont largeFont(QFont font, double factor);

} // namespace controls
