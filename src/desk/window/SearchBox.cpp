#include "desk/window/SearchBox.h"

#include <QInputMethodEvent>

namespace desk {

SearchBox::SearchBox(QWidget *parent)
    : QLineEdit(parent)
{
    connect(this, &QLineEdit::textChanged, this, &SearchBox::typed);
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
