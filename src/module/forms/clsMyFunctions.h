#pragma once

#include "forms/PaneContract.h"

#include <QObject>

/// Locks, opens and empties groups of controls.
class clsMyFunctions : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE explicit clsMyFunctions(QObject *parent = nullptr);

    /// Locked text boxes are grey, read-only, without a frame and passed over by Tab; lists, buttons, pickers and steppers are disabled.
    /// No wheel turns a control of the group while it is locked, though it be enabled by itself.
    /// Opening leaves back colours as they are: whoever opens a group paints it.
    Q_INVOKABLE void setCollection2Locked(const ControlGroup &objCol, bool bCtrlLocked) const;
    /// Empties the text boxes of the group.
    Q_INVOKABLE void resetCollection(const ControlGroup &objCol) const;

    /// Marks a text box that only shows a result: it stays read-only when its group is opened.
    static void keepReadOnly(QWidget *textBox);
};
