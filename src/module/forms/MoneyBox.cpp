#include "forms/MoneyBox.h"

#include "forms/clsNumberRelated.h"
#include "forms/modFunctions.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/LargeFigure.h"
#include "platform/controls/Spoken.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace {

// Keys that edit, move or command rather than type; told by the key, since Ctrl+V and Del bear a control character as
// text.
bool isTypedCharacter(const QKeyEvent *event)
{
    if (event->text().isEmpty() || event->modifiers().testFlag(Qt::ControlModifier)
        || event->modifiers().testFlag(Qt::AltModifier))
        return false;
    switch (event->key()) {
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return false;
    default:
        return true;
    }
}

bool isPassedOn(const QKeyEvent *event)
{
    return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Escape;
}

} // namespace

MoneyBox::MoneyBox(const TextBoxHabits &habits, QWidget *parent)
    : QLineEdit(parent)
    , habits_(habits)
{
    controls::speakMoney(this);
    if (habits_.filtersKeys || habits_.reformats)
        setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (habits_.caretToEndOnChange)
        connect(this, &QLineEdit::textChanged, this, [this] { caretToEnd(this); });
    connect(this, &QLineEdit::textChanged, this, [this] { composing_.end(); });
}

void MoneyBox::keyPressEvent(QKeyEvent *event)
{
    if (habits_.filtersKeys && isTypedCharacter(event)) {
        const QString typed = event->text();
        if (!std::all_of(typed.begin(), typed.end(), [this](QChar character) { return takes(character); })) {
            QApplication::beep();
            event->setAccepted(!isPassedOn(event)); // a dialog may still want Enter and Esc
            return;
        }
    }
    QLineEdit::keyPressEvent(event);
}

bool MoneyBox::takes(QChar character) const
{
    if (character == u'-')
        return selectedText().size() == text().size() || text() == QLatin1String("\\0");
    return character.isDigit();
}

void MoneyBox::keyReleaseEvent(QKeyEvent *event)
{
    QLineEdit::keyReleaseEvent(event);
    // Whatever the key: the Tab that brought the focus reformats as well. A held key is released only once.
    if (!event->isAutoRepeat())
        reformat();
}

void MoneyBox::inputMethodEvent(QInputMethodEvent *event)
{
    if (!habits_.filtersKeys) {
        QLineEdit::inputMethodEvent(event);
        composing_.follow(*event);
        return;
    }
    // What an input method commits never was a key press, so it is sifted here; a syllable in composition isn't shown.
    QString taken;
    for (const QChar character : event->commitString()) {
        if (takes(character))
            taken += character;
    }
    if (taken.size() != event->commitString().size() || !event->preeditString().isEmpty())
        QApplication::beep();
    QInputMethodEvent sifted;
    sifted.setCommitString(taken);
    QLineEdit::inputMethodEvent(&sifted);
    event->accept();
    if (!taken.isEmpty())
        reformat();
}

void MoneyBox::focusInEvent(QFocusEvent *event)
{
    const int caret = cursorPosition();
    QLineEdit::focusInEvent(event);
    if (event->reason() == Qt::PopupFocusReason)
        return; // the box never lost the focus, its own menu was open
    switch (habits_.onFocus) {
    case OnFocus::SelectAll:
        selectAllText(this);
        focusCameByMouse_ = event->reason() == Qt::MouseFocusReason;
        break;
    case OnFocus::CaretToEnd:
        caretToEnd(this);
        break;
    case OnFocus::Nothing:
        setCursorPosition(caret); // Qt selects everything when the focus comes by Tab
        break;
    }
}

void MoneyBox::focusOutEvent(QFocusEvent *event)
{
    composing_.commit([this](QInputMethodEvent *syllable) { QLineEdit::inputMethodEvent(syllable); });
    QLineEdit::focusOutEvent(event);
}

void MoneyBox::mousePressEvent(QMouseEvent *event)
{
    QLineEdit::mousePressEvent(event);
    // The press that brought the focus would drop the selection that came with it.
    if (std::exchange(focusCameByMouse_, false))
        selectAllText(this);
}

void MoneyBox::reformat()
{
    if (habits_.reformats)
        showMoney(this, clsNumberRelated().GetPureNumber(runtime::Trim(text())));
}

/// With the frame of an open box and the room for its cursor.
int boxWidth(const QLineEdit *box, const QString &text)
{
    const int frame = box->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, box);
    return box->fontMetrics().horizontalAdvance(text) + 2 * (frame + 2) + 2;
}

void showLargeMoney(QLineEdit *box)
{
    constexpr double largeMoney = 1.5;
    controls::showLarge(box, largeMoney);
    box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    box->setMinimumWidth(boxWidth(box, QStringLiteral("\\9,999,999")));
}

void showOwed(QLineEdit *box, bool owed)
{
    controls::setInk(box, owed ? controls::Ink::Owed : controls::Ink::Plain);
}

void showMoney(QLineEdit *box, const QString &pureNumber)
{
    controls::setInk(box, pureNumber.startsWith(u'-') ? controls::Ink::Negative : controls::Ink::Plain);
    // An unchanged text is left alone: writing it would take the selection away that came with the focus.
    const QString shown = runtime::Format(pureNumber, runtime::strMoneyFormat);
    if (box->text() != shown)
        box->setText(shown);
}
