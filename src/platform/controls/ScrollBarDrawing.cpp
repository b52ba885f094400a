#include "platform/controls/ScrollBarDrawing.h"

#include "platform/controls/Palette.h"

#include <QPainter>

namespace controls {

namespace {

/// Dark under the mouse, and as long as it is dragged.
QColor handleColor(const QStyleOptionSlider &bar)
{
    const bool inUse = bar.activeSubControls.testFlag(QStyle::SC_ScrollBarSlider)
                       && (bar.state & (QStyle::State_MouseOver | QStyle::State_Sunken));
    return inUse ? ink(Ink::Faint) : scrollHandle();
}

void drawHandle(QPainter *painter, const QStyle &style, const QStyleOptionSlider &bar, const QWidget *widget)
{
    constexpr int beside = 3; ///< pixels of the way on either side
    const bool lying = bar.orientation == Qt::Horizontal;
    const QRect place = style.subControlRect(QStyle::CC_ScrollBar, &bar, QStyle::SC_ScrollBarSlider, widget);
    const int across = qMin(beside, (lying ? place.height() : place.width()) / 4);
    painter->fillRect(lying ? place.adjusted(0, across, 0, -across) : place.adjusted(across, 0, -across, 0),
                      handleColor(bar));
}

void drawArrow(QPainter *painter, const QStyle &style, const QStyleOptionSlider &bar, const QWidget *widget,
               QStyle::SubControl end)
{
    const bool back = end == QStyle::SC_ScrollBarSubLine;
    QStyleOption arrow = bar;
    arrow.rect = style.subControlRect(QStyle::CC_ScrollBar, &bar, end, widget);
    const bool goesOn = bar.state.testFlag(QStyle::State_Enabled)
                        && (back ? bar.sliderPosition > bar.minimum : bar.sliderPosition < bar.maximum);
    arrow.state.setFlag(QStyle::State_Enabled, goesOn);
    arrow.palette.setCurrentColorGroup(goesOn ? QPalette::Active : QPalette::Disabled);
    const bool lying = bar.orientation == Qt::Horizontal;
    if (goesOn && bar.activeSubControls.testFlag(end))
        painter->fillRect(arrow.rect, colors(Ground::OutOfReach).back);
    style.drawPrimitive(lying  ? back ? QStyle::PE_IndicatorArrowLeft : QStyle::PE_IndicatorArrowRight
                        : back ? QStyle::PE_IndicatorArrowUp
                               : QStyle::PE_IndicatorArrowDown,
                        &arrow, painter, widget);
}

} // namespace

void drawScrollBar(QPainter *painter, const QStyle &style, const QStyleOptionSlider &bar, const QWidget *widget)
{
    painter->fillRect(bar.rect, colors(Ground::Face).back);
    for (const QStyle::SubControl end : {QStyle::SC_ScrollBarSubLine, QStyle::SC_ScrollBarAddLine})
        drawArrow(painter, style, bar, widget, end);
    if (bar.maximum > bar.minimum)
        drawHandle(painter, style, bar, widget);
}

} // namespace controls
