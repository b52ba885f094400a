#include "platform/controls/Wheel.h"

#include <QAbstractSpinBox>
#include <QEvent>

namespace controls {

namespace {

constexpr char lockedMark[] = "wheelLocked";

bool takesWheel(const QWidget &control)
{
    const auto *spin = qobject_cast<const QAbstractSpinBox *>(&control);
    return control.hasFocus() && !(spin && spin->isReadOnly()) && !control.property(lockedMark).toBool();
}

class WheelGuard : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Wheel || takesWheel(*static_cast<QWidget *>(watched)))
            return false;
        event->ignore(); // goes on to the parents
        return true;
    }
};

} // namespace

void guardWheel(QWidget *control)
{
    control->setFocusPolicy(Qt::StrongFocus); // the wheel would bring the focus first
    control->installEventFilter(new WheelGuard(control));
}

void lockWheel(QWidget *control, bool locked)
{
    control->setProperty(lockedMark, locked);
}

} // namespace controls
