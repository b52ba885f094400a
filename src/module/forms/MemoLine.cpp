#include "forms/MemoLine.h"

#include <QPainter>
#include <QStyleOptionFrame>
#include <QTextOption>

MemoLine::MemoLine(const TextBoxHabits &habits, QWidget *parent)
    : MoneyBox(habits, parent)
{
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void MemoLine::paintEvent(QPaintEvent *event)
{
    constexpr int innerMargin = 2; // of the stock box
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QRectF place = QRectF(style()->subElementRect(QStyle::SE_LineEditContents, &option, this))
                             .marginsRemoved(textMargins().toMarginsF())
                             .adjusted(innerMargin, 1, -innerMargin, -1);
    const bool isTyped = hasFocus() && !isReadOnly();
    if (isTyped || hasSelectedText() || fontMetrics().horizontalAdvance(text()) <= place.width()) {
        MoneyBox::paintEvent(event);
        return;
    }
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
    painter.setPen(palette().color(QPalette::Text));
    QTextOption wrapped(Qt::AlignLeft | Qt::AlignTop);
    wrapped.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    painter.setClipRect(place);
    painter.drawText(place, text(), wrapped);
}
