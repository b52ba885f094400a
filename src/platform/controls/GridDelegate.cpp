#include "platform/controls/GridDelegate.h"

#include "platform/controls/LargeFigure.h"
#include "platform/controls/Palette.h"
#include "platform/controls/RecordsetModel.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>
#include <QRegularExpressionValidator>
#include <QToolTip>

namespace controls {

namespace {

const GridColumn &columnOf(const QModelIndex &index)
{
    return static_cast<const RecordsetModel *>(index.model())->column(index.column());
}

/// Money as it is typed: digits with or without grouping and the won sign.
const QRegularExpression typedMoney(QStringLiteral("-?\\\\?[0-9,]{0,24}"));

QPixmap checkMark(const QSize &size, const QColor &color, qreal pixelRatio)
{
    QPixmap mark(size * pixelRatio);
    mark.setDevicePixelRatio(pixelRatio);
    mark.fill(Qt::transparent);
    const QRectF cell{QPointF(), QSizeF(size)};
    const qreal unit = qMin(cell.width(), cell.height()) / 10.0;
    const QPointF center = cell.center();
    QPainterPath line(center + QPointF(-2.4, 0.2) * unit);
    line.lineTo(center + QPointF(-0.7, 2.0) * unit);
    line.lineTo(center + QPointF(2.5, -2.0) * unit);
    QPainter painter(&mark);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, unit * 0.9, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(line);
    return mark;
}

/// A bare check mark, for values that are shown and not toggled. A list has many of a size.
void drawCheckMark(QPainter *painter, const QRect &cell, const QColor &color)
{
    const qreal ratio = painter->device()->devicePixelRatioF();
    const QString name = QStringLiteral("check mark %1 %2 %3 %4")
                             .arg(cell.width())
                             .arg(cell.height())
                             .arg(color.rgba(), 0, 16)
                             .arg(ratio);
    QPixmap mark;
    if (!QPixmapCache::find(name, &mark)) {
        mark = checkMark(cell.size(), color, ratio);
        QPixmapCache::insert(name, mark);
    }
    painter->drawPixmap(cell.topLeft(), mark);
}

void drawCheckBox(QPainter *painter, const QStyleOptionViewItem &item, const QStyle &style, bool checked)
{
    QStyleOptionViewItem box = item;
    const QSize size(style.pixelMetric(QStyle::PM_IndicatorWidth, &item, item.widget),
                     style.pixelMetric(QStyle::PM_IndicatorHeight, &item, item.widget));
    box.rect = QStyle::alignedRect(item.direction, Qt::AlignCenter, size, item.rect);
    box.state &= ~QStyle::State_HasFocus;
    box.state |= checked ? QStyle::State_On : QStyle::State_Off;
    style.drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, painter, item.widget);
}

} // namespace

GridDelegate::GridDelegate(Taken taken, QObject *parent)
    : QStyledItemDelegate(parent)
    , taken_(std::move(taken))
{
}

const QLineEdit *GridDelegate::editorOf(int column) const
{
    return editor_ && editedColumn_ == column ? editor_.data() : nullptr;
}

void GridDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (columnOf(index).kind == GridColumn::Kind::Money)
        keepWhole(*option);
    option->features &= ~QStyleOptionViewItem::HasCheckIndicator; // drawn here, in the middle of the cell
    if (index.data(RecordsetModel::FoundRole).toBool())
        option->backgroundBrush = colors(Ground::Hit).back;
    if (!option->state.testFlag(QStyle::State_Selected))
        return;
    // Several grids stand in one window: only the one with the focus shows its row in full colour, the others as in a
    // window that is not in front.
    const QWidget *focused = QApplication::focusWidget();
    if (option->widget && !(focused && (focused == option->widget || option->widget->isAncestorOf(focused)))) {
        for (const QPalette::ColorRole role : {QPalette::Highlight, QPalette::HighlightedText})
            option->palette.setColor(role, option->palette.color(QPalette::Inactive, role));
    }
}

/// An amount without its last digits is another amount: one that is wider than its cell is drawn smaller.
void GridDelegate::keepWhole(QStyleOptionViewItem &option) const
{
    const QStyle *style = option.widget ? option.widget->style() : QApplication::style();
    const int margins = 2 * (style->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, option.widget) + 1);
    const int room = option.rect.width() - margins;
    if (room <= 0 || texts_.widthOf(option.text, option.font) <= room)
        return;
    option.font = fontThatFits(option.font, option.text, room);
    option.fontMetrics = QFontMetrics(option.font);
}

void GridDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    if (!texts_.draw(painter, item))
        QStyledItemDelegate::paint(painter, option, index);
    const GridColumn &column = columnOf(index);
    if (column.kind != GridColumn::Kind::Check)
        return;
    const bool checked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    const bool selected = item.state & QStyle::State_Selected;
    if (column.editable)
        drawCheckBox(painter, item, *item.widget->style(), checked);
    else if (checked)
        drawCheckMark(painter, item.rect, item.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
}

QWidget *GridDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &index) const
{
    const GridColumn &column = columnOf(index);
    auto *editor = new QLineEdit(parent);
    editor->setAccessibleName(column.caption);
    editor->setAlignment(Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt()));
    if (column.kind == GridColumn::Kind::Money)
        editor->setValidator(new QRegularExpressionValidator(typedMoney, editor));
    editor_ = editor;
    editedColumn_ = index.column();
    return editor;
}

void GridDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    auto *box = static_cast<QLineEdit *>(editor);
    if (box->isModified())
        return; // a repaint of the row keeps what is being typed
    box->setText(index.data(Qt::EditRole).toString());
    box->selectAll();
}

void GridDelegate::setModelData(QWidget *editor, QAbstractItemModel *, const QModelIndex &index) const
{
    auto *box = static_cast<QLineEdit *>(editor);
    if (!box->isModified())
        return;
    box->setModified(false); // a box that opens meanwhile takes the focus, which must not take the text twice
    taken_(index, box->text());
}

bool GridDelegate::editorEvent(QEvent *, QAbstractItemModel *, const QStyleOptionViewItem &, const QModelIndex &)
{
    return false; // the grid toggles check cells itself: anywhere in the cell, not only on the mark
}

bool GridDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                             const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const bool cut = sizeHint(option, index).width() > option.rect.width();
    const QString text = cut ? index.data(Qt::DisplayRole).toString().toHtmlEscaped() : QString();
    QToolTip::showText(event->globalPos(), text, view);
    return true;
}

bool GridDelegate::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab || key == Qt::Key_Backtab) {
            // At once: the entry is saved before anything else can happen.
            QPointer<QWidget> editor(static_cast<QWidget *>(object));
            emit commitData(editor);
            if (editor && editor->isVisible()) // rows read anew have closed it already
                emit closeEditor(editor, NoHint);
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(object, event);
}

} // namespace controls
