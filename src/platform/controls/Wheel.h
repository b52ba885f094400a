#pragma once

#include <QWidget>

namespace controls {

/// Keeps the mouse wheel from a date, list or number that it only passes over: without the focus, which comes by click and
/// Tab alone, or where nothing can be changed, the wheel goes on to whatever scrolls there.
void guardWheel(QWidget *control);

/// The same for a control just made: `named(withGuardedWheel(new QComboBox), ...)`.
template <typename Control>
Control *withGuardedWheel(Control *control)
{
    guardWheel(control);
    return control;
}

/// A control that stays enabled though nothing is being edited takes no wheel at all, with the focus neither.
void lockWheel(QWidget *control, bool locked);

} // namespace controls
