#include "platform/controls/SearchBox.h"

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
