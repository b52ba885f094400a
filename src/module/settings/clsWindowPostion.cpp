#include "settings/clsWindowPostion.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace {

constexpr qreal twipsPerInch = 1440;

/// Twips of one pixel, across and down.
QPointF twipsPerPixel(const QWidget &window)
{
    const QScreen *screen = window.screen() ? window.screen() : QGuiApplication::primaryScreen();
    return {twipsPerInch / screen->logicalDotsPerInchX(), twipsPerInch / screen->logicalDotsPerInchY()};
}

} // namespace

void clsWindowPostion::GetCursorPosition(qint32 &x, qint32 &y) const
{
    const QPoint place = QCursor::pos();
    x = place.x();
    y = place.y();
}

void clsWindowPostion::GetScreenPosition(const QWidget &window, qint32 &x, qint32 &y) const
{
    const QPoint origin = window.mapToGlobal(QPoint(0, 0));
    const QPointF twips = twipsPerPixel(window);
    x = qRound(origin.x() * twips.x());
    y = qRound(origin.y() * twips.y());
}

bool clsWindowPostion::GetScreenPosition(WId window, qint32 &x, qint32 &y) const
{
    x = y = 0;
    const QWidget *found = QWidget::find(window);
    if (found)
        GetScreenPosition(*found, x, y);
    return found != nullptr;
}

QPoint clsWindowPostion::pixelsFromTwips(const QWidget &window, qint32 x, qint32 y) const
{
    const QPointF twips = twipsPerPixel(window);
    return {qRound(x / twips.x()), qRound(y / twips.y())};
}
