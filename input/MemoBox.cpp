#include "input/MemoBox.h"

#include "input/modFunctions.h"

#include <QFontMetrics>
#include <QInputMethodEvent>

#include <utility>

namespace {

QSize linesHigh(const QPlainTextEdit &box, int lines)
{
    const QFontMetrics metrics(box.font());
    const int edges = 2 * box.frameWidth() + int(2 * box.document()->documentMargin());
    return {metrics.averageCharWidth() * 16, metrics.lineSpacing() * lines + edges};
}

} // namespace

MemoBox::MemoBox(const TextBoxHabits &habits, QWidget *parent)
    : QPlainTextEdit(parent)
    , habits_(habits)
{
    setTabChangesFocus(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    if (habits_.caretToEndOnChange)
        connect(this, &QPlainTextEdit::textChanged, this, [this] { caretToEnd(this); });
    connect(this, &QPlainTextEdit::textChanged, this, [this] { composing_.clear(); });
}

QSize MemoBox::sizeHint() const
{
    return linesHigh(*this, 3);
}

QSize MemoBox::minimumSizeHint() const
{
    return linesHigh(*this, 2);
}

void MemoBox::inputMethodEvent(QInputMethodEvent *event)
{
    QPlainTextEdit::inputMethodEvent(event);
    composing_ = event->preeditString();
}

void MemoBox::focusOutEvent(QFocusEvent *event)
{
    if (!composing_.isEmpty()) {
        QInputMethodEvent commit;
        commit.setCommitString(std::exchange(composing_, QString()));
        QPlainTextEdit::inputMethodEvent(&commit);
    }
    QPlainTextEdit::focusOutEvent(event);
}

void MemoBox::focusInEvent(QFocusEvent *event)
{
    QPlainTextEdit::focusInEvent(event);
    if (habits_.onFocus == OnFocus::SelectAll)
        selectAllText(this);
    else if (habits_.onFocus == OnFocus::CaretToEnd)
        caretToEnd(this);
}
