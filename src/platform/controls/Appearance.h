#pragma once

#include "platform/controls/Palette.h"

#include <QFont>
#include <QWidget>

#include <functional>

namespace controls {

/// Background of a control and the text that belongs to it: base and text of text boxes and lists, face and text of buttons,
/// a filled background for boxes, options and labels. It follows when the desktop turns dark or light.
void setGround(QWidget *control, Ground ground);
QColor backColor(const QWidget *control);
/// Text of another colour on the control's ground. The text of a disabled control stays grey.
void setInk(QWidget *control, Ink ink);
QColor foreColor(const QWidget *control);
/// The ground that a control was given.
bool hasGround(const QWidget *control);

/// Runs `paint` now and whenever the desktop changes its colours, as long as the owner lives.
void followColors(QObject *owner, std::function<void()> paint);
/// Stripes, the mark of the row that is chosen, and the pale one in a list without the focus.
void dressList(QWidget *list);

/// Stands a free Korean font in for those named by the system's forms where they are not installed. Once per process.
void installKoreanFonts();
/// Font of all windows.
QFont deskFont();
/// Whether the font draws the backslash as the won sign; false means that amounts would show a slash.
bool showsWonSign(const QFont &font);

} // namespace controls
