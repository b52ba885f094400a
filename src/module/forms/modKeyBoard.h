#pragma once

#include <QWidget>

/// Keys that move the focus. A routine that acts sets the key code to 0, which means to the caller that the key is eaten.
/// Key codes are those of Qt::Key.

/// Sends a Tab, or a Shift+Tab, to the control that has the focus, as if it were typed.
void sendTab(bool forward, Qt::KeyboardModifiers state = Qt::NoModifier);

/// Enter moves on.
void enterToTab(int &keyCode);
/// Enter and Down move on, Up moves back.
void arrowEnterToTab(int &keyCode);
/// Ctrl+Down moves on, Ctrl+Up moves back; the keys held are cleared first.
void ctrlArrowToTab(int &keyCode, Qt::KeyboardModifiers &shift);
/// Takes Shift and Ctrl out of the state that goes with the next key sent; a Tab sent under a held Ctrl would turn pages.
void clearShiftCtrlKeys(Qt::KeyboardModifiers &state);

/// Keeps the input method away from a control that takes no text, so that a key pressed on it is a plain key.
void disableIme(QWidget *control);
