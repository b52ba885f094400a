#include "platform/controls/MoneySpoken.h"

#include "platform/controls/Spoken.h"

#include <algorithm>

namespace controls {

MoneySpoken::MoneySpoken(QLineEdit *box)
    : QAccessibleWidget(box, QAccessible::EditableText)
{
}

void *MoneySpoken::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface *>(this);
    if (type == QAccessible::EditableTextInterface)
        return static_cast<QAccessibleEditableTextInterface *>(this);
    return QAccessibleWidget::interface_cast(type);
}

QString MoneySpoken::spoken() const
{
    return spokenText(*box());
}

QString MoneySpoken::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Value ? spoken() : QAccessibleWidget::text(kind);
}

void MoneySpoken::setText(QAccessible::Text kind, const QString &text)
{
    if (kind == QAccessible::Value && !box()->isReadOnly())
        box()->setText(text);
    else
        QAccessibleWidget::setText(kind, text);
}

QAccessible::State MoneySpoken::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = box()->isReadOnly();
    state.editable = !box()->isReadOnly();
    state.selectableText = true;
    return state;
}

int MoneySpoken::signPlace() const
{
    return spoken().contains(u'\\') ? -1 : int(box()->displayText().indexOf(u'\\'));
}

int MoneySpoken::shownPlace(int spokenPlace) const
{
    const int sign = signPlace();
    const int place = sign >= 0 && spokenPlace > sign ? spokenPlace + 1 : spokenPlace;
    return std::min(place, int(box()->displayText().size()));
}

int MoneySpoken::spokenPlace(int shownPlace) const
{
    const int sign = signPlace();
    return sign >= 0 && shownPlace > sign ? shownPlace - 1 : shownPlace;
}

void MoneySpoken::selection(int, int *startOffset, int *endOffset) const
{
    const bool any = box()->hasSelectedText();
    *startOffset = any ? spokenPlace(box()->selectionStart()) : 0;
    *endOffset = any ? spokenPlace(box()->selectionEnd()) : 0;
}

int MoneySpoken::selectionCount() const
{
    return box()->hasSelectedText() ? 1 : 0;
}

void MoneySpoken::addSelection(int startOffset, int endOffset)
{
    setSelection(0, startOffset, endOffset);
}

void MoneySpoken::removeSelection(int)
{
    box()->deselect();
}

void MoneySpoken::setSelection(int, int startOffset, int endOffset)
{
    const int start = shownPlace(startOffset);
    box()->setSelection(start, shownPlace(endOffset) - start);
}

int MoneySpoken::cursorPosition() const
{
    return spokenPlace(box()->cursorPosition());
}

void MoneySpoken::setCursorPosition(int position)
{
    box()->setCursorPosition(shownPlace(position));
}

QString MoneySpoken::text(int startOffset, int endOffset) const
{
    return spoken().mid(startOffset, endOffset - startOffset);
}

int MoneySpoken::characterCount() const
{
    return int(spoken().size());
}

QRect MoneySpoken::characterRect(int) const
{
    return rect();
}

int MoneySpoken::offsetAtPoint(const QPoint &point) const
{
    return spokenPlace(box()->cursorPositionAt(box()->mapFromGlobal(point)));
}

void MoneySpoken::scrollToSubstring(int startIndex, int)
{
    setCursorPosition(startIndex);
}

QString MoneySpoken::attributes(int, int *startOffset, int *endOffset) const
{
    *startOffset = 0;
    *endOffset = characterCount();
    return {};
}

void MoneySpoken::deleteText(int startOffset, int endOffset)
{
    replaceText(startOffset, endOffset, {});
}

void MoneySpoken::insertText(int offset, const QString &text)
{
    replaceText(offset, offset, text);
}

void MoneySpoken::replaceText(int startOffset, int endOffset, const QString &text)
{
    if (box()->isReadOnly())
        return;
    setSelection(0, startOffset, endOffset);
    box()->insert(text);
}

} // namespace controls
