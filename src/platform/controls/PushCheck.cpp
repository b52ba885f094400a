#include "platform/controls/PushCheck.h"

#include "platform/controls/Appearance.h"
#include "platform/controls/EventEdge.h"

#include <QStyleOptionButton>
#include <QStylePainter>

#include <utility>

namespace controls {

PushCheck::PushCheck(const QString &caption, QWidget *parent)
    : QPushButton(caption, parent)
{
    // Enter moves on to the next control everywhere in the system; it never presses a button.
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, [this] { setValue(1); });
}

void PushCheck::setValue(int value)
{
    // A disabled box takes a value by code and raises its click all the same: disabling keeps out the user, not the flows.
    if (value == value_)
        return;
    value_ = value;
    emit checkClicked();
}

void PushCheck::onPush(QObject *context, std::function<void()> work)
{
    connect(this, &PushCheck::checkClicked, context, [this, work = std::move(work)] {
        if (value_ == 0)
            return;
        setValue(0); // raises the click a second time; that pass ends at the test above
        repaint();
        runEvent(work, this); // may end with the button gone
    });
}

void PushCheck::paintEvent(QPaintEvent *event)
{
    if (!isEnabled() || !hasGround(this))
        return QPushButton::paintEvent(event);
    constexpr qreal corner = 3;
    QStyleOptionButton option;
    initStyleOption(&option);
    const QColor back = backColor(this);
    const QRectF face = QRectF(rect()).adjusted(1, 1, -1, -1);
    QStylePainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isDown() ? back.darker(120) : back);
    painter.drawRoundedRect(face, corner, corner);
    if (hasFocus()) {
        painter.setPen(QPen(focusFrame(back), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(face.adjusted(3, 3, -3, -3), corner - 1, corner - 1);
    }
    painter.drawControl(QStyle::CE_PushButtonLabel, option);
}

} // namespace controls
