#pragma once

#include <QWidget>

/// Selects the whole text of a text box or of a combo box that can be typed into; other controls are left alone.
void selectAllText(QWidget *control);
/// Puts the caret behind the text of a text box, without a selection.
void caretToEnd(QWidget *control);
