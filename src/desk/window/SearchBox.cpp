#include "desk/window/SearchBox.h"

#include <QFocusEvent>
#include <QInputMethodEvent>

#include <utility>

namespace desk {

SearchBox::SearchBox(QWidget *parent)
    : QLineEdit(parent)
{
    connect(this, &QLineEdit::textChanged, this, &SearchBox::typed);
}

void SearchBox::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    if (event->reason() != Qt::PopupFocusReason) // the box's own menu was open
        selectAll();
    focusCameByMouse_ = event->reason() == Qt::MouseFocusReason;
}

void SearchBox::mousePressEvent(QMouseEvent *event)
{
    QLineEdit::mousePressEvent(event);
    // The press that brought the focus would drop the selection that came with it.
    if (std::exchange(focusCameByMouse_, false))
        selectAll();
}

void SearchBox::inputMethodEvent(QInputMethodEvent *event)
{
    const QString composing = event->preeditString();
    QLineEdit::inputMethodEvent(event);
    if (!composing.isEmpty())
        emit typed(text().insert(cursorPosition(), composing));
    else if (event->commitString().isEmpty())
        emit typed(text());
}

} // namespace desk
