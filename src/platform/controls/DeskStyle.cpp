#include "platform/controls/DeskStyle.h"

#include "platform/controls/Palette.h"
#include "platform/controls/ScrollBarDrawing.h"

#include <QAbstractScrollArea>
#include <QGroupBox>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace controls {

namespace {

constexpr int frameWidth = 2;

/// Inside the rectangle, and telling from that background.
void drawFocusFrame(QPainter *painter, const QRect &rect, const QColor &back, int width = frameWidth)
{
    const qreal half = width / 2.0;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(focusFrame(back), width));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(QRectF(rect).adjusted(half, half, -half, -half), 2, 2);
    painter->restore();
}

bool isIndicator(QStyle::PrimitiveElement element)
{
    return element == QStyle::PE_IndicatorCheckBox || element == QStyle::PE_IndicatorRadioButton
           || element == QStyle::PE_IndicatorItemViewItemCheck;
}

/// Fusion draws boxes and rings darker than what they stand on, which a dark window swallows.
void drawOutline(QPainter *painter, const QRect &rect, bool round)
{
    const QRectF line = QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(disabledText());
    painter->setBrush(Qt::NoBrush);
    if (round)
        painter->drawEllipse(line);
    else
        painter->drawRect(line);
    painter->restore();
}

/// On the ground of the window: Fusion tints a group, and what is locked in one would stand out as a patch.
void drawGroupLine(QPainter *painter, QRect rect, const QWidget *widget, int indicatorHeight)
{
    constexpr int belowTitle = 3; // as Fusion reckons the contents
    const auto *group = qobject_cast<const QGroupBox *>(widget);
    if (group && !group->title().isEmpty())
        rect.setTop(rect.top() + qMax(indicatorHeight, group->fontMetrics().height()) + belowTitle);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(groupLine());
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
    painter->restore();
}

bool hasFocus(const QStyleOption *option)
{
    return option->state.testFlag(QStyle::State_HasFocus);
}

} // namespace

DeskStyle::DeskStyle()
    : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
{
}

int DeskStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    // The rest of a list's frame lies under its contents.
    if (metric == PM_DefaultFrameWidth && qobject_cast<const QAbstractScrollArea *>(widget))
        return frameWidth;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

void DeskStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                              const QWidget *widget) const
{
    if (element == PE_FrameFocusRect) {
        const auto *focus = qstyleoption_cast<const QStyleOptionFocusRect *>(option);
        const bool byKeyboard = option->state.testFlag(State_KeyboardFocusChange);
        // A cell lies in its list's own frame; its row may be too low for a wide one.
        const bool cell = option->state.testFlag(State_Item);
        if (focus && (byKeyboard || cell))
            drawFocusFrame(painter, option->rect,
                           focus->backgroundColor.isValid() ? focus->backgroundColor
                                                            : option->palette.color(QPalette::Window),
                           cell ? 1 : frameWidth);
        return;
    }
    if (element == PE_PanelScrollAreaCorner) // between two scroll bars
        return painter->fillRect(option->rect, colors(Ground::Face).back);
    if (element == PE_FrameGroupBox)
        return drawGroupLine(painter, option->rect, widget, pixelMetric(PM_IndicatorHeight, option, widget));
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (isIndicator(element) && scheme() == Scheme::Dark)
        drawOutline(painter, option->rect, element == PE_IndicatorRadioButton);
    if (element == PE_PanelLineEdit && hasFocus(option)) {
        const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
        if (frame && frame->lineWidth > 0)
            drawFocusFrame(painter, option->rect, option->palette.color(QPalette::Base));
    }
}

void DeskStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                            const QWidget *widget) const
{
    if (element == CE_ProgressBarContents) {
        const auto *bar = qstyleoption_cast<const QStyleOptionProgressBar *>(option);
        const int range = bar ? bar->maximum - bar->minimum : 0;
        if (range > 0) {
            QRect done = option->rect;
            done.setWidth(int(qint64(done.width()) * (bar->progress - bar->minimum) / range));
            painter->fillRect(done, option->palette.color(QPalette::Highlight));
            return;
        }
    }
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_ShapedFrame && hasFocus(option) && qobject_cast<const QAbstractScrollArea *>(widget))
        drawFocusFrame(painter, option->rect, option->palette.color(QPalette::Base));
}

void DeskStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                                   const QWidget *widget) const
{
    const auto *bar = control == CC_ScrollBar ? qstyleoption_cast<const QStyleOptionSlider *>(option) : nullptr;
    if (bar)
        return drawScrollBar(painter, *this, *bar, widget);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if ((control == CC_ComboBox || control == CC_SpinBox) && hasFocus(option))
        drawFocusFrame(painter, option->rect, option->palette.color(QPalette::Base));
}

} // namespace controls
