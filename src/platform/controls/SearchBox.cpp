#include "platform/controls/SearchBox.h"

#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QPointer>

#include <utility>

namespace controls {

SearchBox::SearchBox(QWidget *parent)
    : QLineEdit(parent)
{
    connect(this, &QLineEdit::textChanged, this, &SearchBox::tellChange);
}

QString SearchBox::shownText() const
{
    return text().insert(cursorPosition(), composing_);
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

void SearchBox::keyPressEvent(QKeyEvent *event)
{
    byStockLine([&] { QLineEdit::keyPressEvent(event); });
}

void SearchBox::inputMethodEvent(QInputMethodEvent *event)
{
    composing_ = event->preeditString();
    byStockLine([&] { QLineEdit::inputMethodEvent(event); });
}

void SearchBox::byStockLine(const std::function<void()> &answer)
{
    const QPointer<SearchBox> alive(this);
    inStockLine_ = true;
    answer();
    if (!alive)
        return;
    inStockLine_ = false;
    tellChange();
}

void SearchBox::tellChange()
{
    QString now = shownText();
    if (!inStockLine_ && now != told_) {
        told_ = std::move(now);
        emit typed(told_);
    }
}

} // namespace controls
