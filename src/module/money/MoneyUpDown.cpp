#include "money/MoneyUpDown.h"

#include "platform/controls/EventEdge.h"
#include "platform/controls/Named.h"
#include "platform/runtime/Conversions.h"

#include <QEvent>
#include <QFocusEvent>
#include <QGridLayout>

namespace {

struct MoneyStep
{
    const char16_t *caption;
    float step;
};

constexpr MoneyStep moneySteps[] = {
    {u"+만", 10000}, {u"+천", 1000}, {u"+백", 100}, {u"-만", -10000}, {u"-천", -1000}, {u"-백", -100},
};
constexpr int stepsInRow = 3;

/// Another window in front is no loss of the focus within this one.
bool leavesWindow(const QEvent *event)
{
    const Qt::FocusReason reason = static_cast<const QFocusEvent *>(event)->reason();
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

} // namespace

qint32 wholeMoney(const QString &text)
{
    const QString typed = runtime::Trim(text);
    return typed.isEmpty() ? 0 : runtime::CLng(typed);
}

MoneyUpDown::MoneyUpDown(const QString &name, QWidget *parent)
    : QWidget(parent)
{
    controls::named(this, name);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(2);
    for (int index = 0; index < int(ssrUpDown_.size()); ++index) {
        const MoneyStep &entry = moneySteps[index];
        auto *button = new controls::PushCheck(QString::fromUtf16(entry.caption), this);
        controls::named(button, QStringLiteral("ssrUpDown"), index);
        button->setFocusPolicy(Qt::NoFocus);
        button->setMinimumWidth(button->fontMetrics().horizontalAdvance(button->text()) + 18);
        button->onPush(this, [this, step = entry.step] { emit evtMoneyStep(step); });
        grid->addWidget(button, index / stepsInRow, index % stepsInRow);
        ssrUpDown_[index] = button;
    }
    controls::onEvent(this, &MoneyUpDown::evtMoneyStep, this, [this](float step) { addStep(step); });
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void MoneyUpDown::serve(QLineEdit *box, OnKey onKey)
{
    (onKey == OnKey::Disable ? boxesWithoutKeys_ : boxes_).append(box);
    box->installEventFilter(this);
}

bool MoneyUpDown::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && !leavesWindow(event))
        setEnabled(true);
    else if (event->type() == QEvent::FocusOut && !leavesWindow(event))
        setEnabled(false);
    else if (event->type() == QEvent::KeyPress && boxesWithoutKeys_.contains(watched))
        setEnabled(false);
    return QWidget::eventFilter(watched, event);
}

void MoneyUpDown::addStep(float step)
{
    auto *box = qobject_cast<QLineEdit *>(window()->focusWidget());
    if (!box || !(boxes_.contains(box) || boxesWithoutKeys_.contains(box)))
        return;
    const qint64 sum = qint64(wholeMoney(box->text())) + qint64(step);
    box->setText(QString::number(runtime::toLong(sum)));
}
