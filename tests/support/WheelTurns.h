#pragma once

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QTest>
#include <QWheelEvent>

/// Turns the mouse wheel towards the user over the middle of a control, as the desktop does.
inline void turnWheel(QWidget *control)
{
    const QPoint middle = control->rect().center();
    QWidget *under = control->childAt(middle) ? control->childAt(middle) : control;
    const QPointF place = under->mapFrom(control, middle);
    QWheelEvent event(place, under->mapToGlobal(place), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(under, &event);
}

/// What a date, number or list shows.
inline QString shownBy(const QWidget *control)
{
    if (const auto *list = qobject_cast<const QComboBox *>(control))
        return list->currentText();
    const auto *spin = qobject_cast<const QAbstractSpinBox *>(control);
    return spin ? spin->text() : QString();
}

/// Names of the dates, numbers and lists of a window that the wheel turned, or brought the focus to, without their having
/// had it, be they open or locked.
inline QString turnedByWheel(QWidget *window)
{
    QStringList turned;
    for (QWidget *control : window->findChildren<QWidget *>()) {
        if (shownBy(control).isNull() || !control->isVisible() || control->hasFocus())
            continue;
        const bool enabled = control->isEnabledTo(control->parentWidget());
        control->setEnabled(true);
        const QString before = shownBy(control);
        turnWheel(control);
        if (shownBy(control) != before || control->hasFocus())
            turned << control->objectName();
        control->setEnabled(enabled);
    }
    return turned.join(u' ');
}
