#include "input/MemoBox.h"

#include "input/modFunctions.h"

#include <QFontMetrics>

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
}

QSize MemoBox::sizeHint() const
{
    return linesHigh(*this, 3);
}

QSize MemoBox::minimumSizeHint() const
{
    return linesHigh(*this, 2);
}

void MemoBox::focusInEvent(QFocusEvent *event)
{
    QPlainTextEdit::focusInEvent(event);
    if (habits_.onFocus == OnFocus::SelectAll)
        selectAllText(this);
    else if (habits_.onFocus == OnFocus::CaretToEnd)
        caretToEnd(this);
}
