#include "platform/controls/Stepper.h"

#include "platform/controls/Named.h"

#include <QLineEdit>
#include <QVBoxLayout>

namespace controls {

namespace {

QToolButton *makeStepButton(Qt::ArrowType arrow, const QString &accessibleName, QWidget *parent)
{
    auto *button = new QToolButton(parent);
    button->setArrowType(arrow);
    button->setAccessibleName(accessibleName);
    button->setFocusPolicy(Qt::NoFocus); // the stepped box keeps the focus
    button->setAutoRepeat(true);
    button->setFixedWidth(20);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    return button;
}

} // namespace

Stepper::Stepper(const QString &name, int index, QWidget *parent)
    : QWidget(parent)
    , up_(makeStepButton(Qt::UpArrow, QStringLiteral("늘리기"), this))
    , down_(makeStepButton(Qt::DownArrow, QStringLiteral("줄이기"), this))
{
    connect(this, &QObject::objectNameChanged, this, [this](const QString &own) {
        up_->setObjectName(own + QStringLiteral("_up"));
        down_->setObjectName(own + QStringLiteral("_down"));
    });
    named(this, name, index);
    setFocusPolicy(Qt::NoFocus);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(up_);
    layout->addWidget(down_);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFixedHeight(QLineEdit().sizeHint().height()); // stands beside a text box

    connect(up_, &QToolButton::clicked, this, &Stepper::up);
    connect(down_, &QToolButton::clicked, this, &Stepper::down);
}

} // namespace controls
