#include "forms/MemoBox.h"

#include "forms/modFunctions.h"

#include <QFontMetrics>
#include <QRegularExpression>
#include <QStyle>

namespace {

QSize linesHigh(const QPlainTextEdit &box, int lines)
{
    const QFontMetrics metrics(box.font());
    // Of the frame that an open box has: what lies beside it must not move when an edit begins.
    const int frame = box.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &box);
    const int edges = 2 * frame + int(2 * box.document()->documentMargin());
    return {metrics.averageCharWidth() * 16, metrics.lineSpacing() * lines + edges};
}

/// The kind of the first one; a plain line feed where there is none.
QString lineBreakOf(const QString &text)
{
    const qsizetype first = text.indexOf(QRegularExpression(QStringLiteral("[\r\n]")));
    if (first < 0 || text[first] == u'\n')
        return QStringLiteral("\n");
    return text.mid(first + 1).startsWith(u'\n') ? QStringLiteral("\r\n") : QStringLiteral("\r");
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
    connect(this, &QPlainTextEdit::textChanged, this, [this] { composing_.end(); });
}

QString MemoBox::text() const
{
    QString text = toPlainText();
    return text == shown_ ? set_ : text.replace(u'\n', lineBreakOf(set_));
}

void MemoBox::setText(const QString &text)
{
    set_ = text;
    setPlainText(text);
    shown_ = toPlainText();
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
    composing_.follow(*event);
}

void MemoBox::focusOutEvent(QFocusEvent *event)
{
    composing_.commit([this](QInputMethodEvent *syllable) { QPlainTextEdit::inputMethodEvent(syllable); });
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
