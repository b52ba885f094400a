#include "platform/controls/CellTexts.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

#include <cmath>
#include <memory>

namespace controls {

namespace {

bool isPlain(const QStyleOptionViewItem &cell)
{
    using Option = QStyleOptionViewItem;
    const bool beside = cell.features & (Option::HasDecoration | Option::HasCheckIndicator | Option::WrapText);
    return !beside && !(cell.state & (QStyle::State_HasFocus | QStyle::State_Editing))
           && cell.direction == Qt::LeftToRight && !cell.text.contains(QChar::LineSeparator);
}

QColor textColor(const QStyleOptionViewItem &cell)
{
    const QPalette::ColorGroup group = !cell.state.testFlag(QStyle::State_Enabled) ? QPalette::Disabled
                                       : cell.state.testFlag(QStyle::State_Active) ? QPalette::Normal
                                                                                   : QPalette::Inactive;
    const bool selected = cell.state.testFlag(QStyle::State_Selected);
    return cell.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
}

} // namespace

const CellTexts::Shaped &CellTexts::shaped(const QString &text, const QFont &font) const
{
    const Shaped *known = known_.object(text);
    if (known && known->font == font)
        return *known;
    auto made = std::make_unique<Shaped>(Shaped{font, QStaticText(text), 0, 0});
    made->glyphs.setTextFormat(Qt::PlainText);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    made->glyphs.setTextOption(option);
    made->glyphs.prepare(QTransform(), font);
    made->width = made->glyphs.size().width();
    made->height = made->glyphs.size().height();
    const Shaped &result = *made;
    known_.insert(text, made.release());
    return result;
}

bool CellTexts::draw(QPainter *painter, const QStyleOptionViewItem &cell) const
{
    if (!isPlain(cell))
        return false;
    const QStyle *const style = cell.widget ? cell.widget->style() : QApplication::style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &cell, cell.widget) + 1;
    const QRect room = cell.rect.adjusted(margin, 0, -margin, 0);
    const Shaped &text = shaped(cell.text, cell.font);
    if (text.width > room.width() || text.height > room.height())
        return false;
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, cell.widget);
    const qreal besides = room.width() - text.width;
    const qreal left = cell.displayAlignment & Qt::AlignRight     ? besides
                       : cell.displayAlignment & Qt::AlignHCenter ? besides / 2
                                                                  : 0;
    const QPen pen = painter->pen();
    const QFont font = painter->font();
    painter->setPen(textColor(cell));
    painter->setFont(cell.font);
    painter->drawStaticText(QPointF(room.x() + left, room.y() + std::floor((room.height() - text.height) / 2)),
                            text.glyphs);
    painter->setFont(font);
    painter->setPen(pen);
    return true;
}

} // namespace controls
