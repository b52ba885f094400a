#include "desk/window/FirstPaint.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

namespace desk {

FirstPaint::FirstPaint(QObject *parent)
    : QObject(parent)
{
    qApp->installEventFilter(this);
}

bool FirstPaint::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint && watched->isWidgetType() && static_cast<QWidget *>(watched)->isWindow()) {
        qApp->removeEventFilter(this);
        // Behind what the painting left to be done: only then does the window answer.
        QTimer::singleShot(0, this, &FirstPaint::happened);
    }
    return false;
}

} // namespace desk
