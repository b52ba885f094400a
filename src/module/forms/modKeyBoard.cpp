#include "forms/modKeyBoard.h"

#include <QApplication>
#include <QKeyEvent>

namespace {

bool isEnter(int keyCode)
{
    return keyCode == Qt::Key_Return || keyCode == Qt::Key_Enter;
}

void sendKey(QEvent::Type type, int key, Qt::KeyboardModifiers state)
{
    // The focus is asked for anew: the release belongs to the control that the press moved to.
    if (QWidget *target = QApplication::focusWidget()) {
        QKeyEvent event(type, key, state, QStringLiteral("\t"));
        QCoreApplication::sendEvent(target, &event);
    }
}

} // namespace

void sendTab(bool forward, Qt::KeyboardModifiers state)
{
    const int key = forward ? Qt::Key_Tab : Qt::Key_Backtab;
    if (!forward)
        state |= Qt::ShiftModifier;
    sendKey(QEvent::KeyPress, key, state);
    sendKey(QEvent::KeyRelease, key, state);
}

void enterToTab(int &keyCode)
{
    if (!isEnter(keyCode))
        return;
    sendTab(true);
    keyCode = 0;
}

void arrowEnterToTab(int &keyCode)
{
    if (isEnter(keyCode) || keyCode == Qt::Key_Down)
        sendTab(true);
    else if (keyCode == Qt::Key_Up)
        sendTab(false);
    else
        return;
    keyCode = 0;
}

void ctrlArrowToTab(int &keyCode, Qt::KeyboardModifiers &shift)
{
    if (!shift.testFlag(Qt::ControlModifier) || (keyCode != Qt::Key_Down && keyCode != Qt::Key_Up))
        return;
    const bool forward = keyCode == Qt::Key_Down;
    keyCode = 0;
    clearShiftCtrlKeys(shift);
    sendTab(forward, shift & ~Qt::KeyboardModifiers(Qt::KeypadModifier));
}

void clearShiftCtrlKeys(Qt::KeyboardModifiers &state)
{
    state &= ~(Qt::ShiftModifier | Qt::ControlModifier);
}

void disableIme(QWidget *control)
{
    control->setAttribute(Qt::WA_InputMethodEnabled, false);
}
