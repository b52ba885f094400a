#pragma once

#include <QMultiHash>
#include <QString>
#include <QWidget>

/// Every control of the window that has a name. For tables of many names: to look through the window for each of them
/// takes longer than to make it.
inline QMultiHash<QString, QWidget *> controlsByName(const QWidget &window)
{
    QMultiHash<QString, QWidget *> controls;
    const QList<QWidget *> all = window.findChildren<QWidget *>();
    for (QWidget *control : all) {
        if (!control->objectName().isEmpty())
            controls.insert(control->objectName(), control);
    }
    return controls;
}
