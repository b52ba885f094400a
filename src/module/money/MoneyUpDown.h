#pragma once

#include "platform/controls/PushCheck.h"

#include <QLineEdit>
#include <QWidget>

#include <array>

/// Six buttons that step the amount being typed: ten thousand, a thousand, a hundred, up and down. They take no focus, so
/// the amount keeps it. Enabling and disabling the widget does so for all six.
class MoneyUpDown : public QWidget
{
    Q_OBJECT
public:
    /// What a key typed into the amount does to the steps.
    enum class OnKey { Keep, Disable };

    explicit MoneyUpDown(const QString &name, QWidget *parent = nullptr);

    /// Steps are within reach while one of the served boxes has the focus. A step goes to the box that has it.
    void serve(QLineEdit *box, OnKey onKey);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void evtMoneyStep(float step);

private:
    void addStep(float step);

    std::array<controls::PushCheck *, 6> ssrUpDown_{};
    QList<QLineEdit *> boxes_;
    QList<QLineEdit *> boxesWithoutKeys_;
};

/// The number in a typed amount taken to the nearest whole won; grouping and the won sign are accepted, an empty text is
/// 0. Raises TypeMismatch for a text that is no number and Overflow beyond 32 bits.
qint32 wholeMoney(const QString &text);
