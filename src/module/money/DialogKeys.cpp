#include "money/DialogKeys.h"

#include "forms/modFunctions.h"
#include "forms/modKeyBoard.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <utility>

namespace {

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

/// Whether the key would write, or paste, something else than digits. Told by the key where Ctrl is held: the text of
/// such a key is a control character on one desktop and empty on another.
bool writesMoreThanDigits(const QKeyEvent &event)
{
    if (event.modifiers().testFlag(Qt::AltModifier))
        return false;
    if (event.modifiers().testFlag(Qt::ControlModifier))
        return event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z;
    const QString typed = event.text();
    return std::any_of(typed.begin(), typed.end(),
                       [](QChar character) { return character.isPrint() && !isDigit(character); });
}

} // namespace

DialogKeys::DialogKeys(QDialog *dialog, QAbstractButton *f12, QAbstractButton *f9)
    : QObject(dialog)
    , f12_(f12)
    , f9_(f9)
{
    for (auto *button : dialog->findChildren<QPushButton *>()) {
        button->setAutoDefault(false);
        button->setDefault(false);
    }
    // An input method must not take the key that presses a button.
    for (auto *button : dialog->findChildren<QAbstractButton *>())
        disableIme(button);
    dialog->installEventFilter(this);
    for (auto *control : dialog->findChildren<QWidget *>())
        control->installEventFilter(this);
}

void DialogKeys::setHabits(QWidget *control, int habits)
{
    habits_.insert(control, habits);
    // A combo box gets the focus and the keys, the text box in it the mouse.
    if (const auto *combo = qobject_cast<QComboBox *>(control); combo && combo->lineEdit())
        habits_.insert(combo->lineEdit(), habits & SelectsOnFocus);
}

bool DialogKeys::eventFilter(QObject *watched, QEvent *event)
{
    auto *control = static_cast<QWidget *>(watched);
    const int habits = habits_.value(watched);
    switch (event->type()) {
    case QEvent::KeyPress:
        // A key that nobody took climbs to the parents; it counts where it was typed.
        if (control->hasFocus() || control->isWindow())
            return keyPressed(control, *static_cast<QKeyEvent *>(event));
        break;
    case QEvent::InputMethod: {
        const QString typed = static_cast<QInputMethodEvent *>(event)->commitString();
        return (habits & DigitsOnly) && !std::all_of(typed.begin(), typed.end(), isDigit);
    }
    case QEvent::FocusIn:
        if (habits & SelectsOnFocus)
            selectAllText(control);
        focusCameByMouse_ = static_cast<QFocusEvent *>(event)->reason() == Qt::MouseFocusReason;
        break;
    case QEvent::MouseButtonPress:
        pressBroughtFocus_ = std::exchange(focusCameByMouse_, false);
        break;
    case QEvent::MouseButtonRelease:
        // The press that brought the focus dropped the selection that came with it.
        if (std::exchange(pressBroughtFocus_, false) && (habits & SelectsOnFocus))
            selectAllText(control);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool DialogKeys::keyPressed(QWidget *control, const QKeyEvent &event)
{
    int keyCode = event.key();
    Qt::KeyboardModifiers shift = event.modifiers();
    ctrlArrowToTab(keyCode, shift);
    if (keyCode == 0 || pressesButton(event))
        return true;
    const int habits = habits_.value(control);
    if (habits & MovesByArrows)
        arrowEnterToTab(keyCode);
    else
        enterToTab(keyCode);
    return keyCode == 0 || ((habits & DigitsOnly) && writesMoreThanDigits(event));
}

bool DialogKeys::pressesButton(const QKeyEvent &event)
{
    QAbstractButton *button = event.key() == Qt::Key_F12 ? f12_ : event.key() == Qt::Key_F9 ? f9_ : nullptr;
    if (!button)
        return false;
    if (!event.isAutoRepeat())
        button->click();
    return true;
}
