#include "desk/window/GearButton.h"

#include <QPainterPath>
#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace desk {

namespace {

/// About its middle, in a square of that side.
QPainterPath gear(double side)
{
    constexpr int teeth = 8;
    const double outer = side / 2, inner = outer * 0.74, hole = outer * 0.34;
    QPainterPath tooth;
    tooth.addRect(QRectF(-outer * 0.19, -outer, outer * 0.38, outer));
    QPainterPath wheel;
    wheel.addEllipse(QPointF(), inner, inner);
    for (int at = 0; at < teeth; ++at)
        wheel = wheel.united(QTransform().rotate(360.0 / teeth * at).map(tooth));
    QPainterPath axle;
    axle.addEllipse(QPointF(), hole, hole);
    return wheel.subtracted(axle);
}

} // namespace

GearButton::GearButton(QWidget *parent)
    : QToolButton(parent)
{
    setAutoRaise(true);
    setFocusPolicy(Qt::StrongFocus);
}

void GearButton::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.text.clear();
    option.icon = QIcon();
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(rect()).center());
    painter.fillPath(gear(std::min(width(), height()) * 0.56), option.palette.brush(QPalette::ButtonText));
}

} // namespace desk
