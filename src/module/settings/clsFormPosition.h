#pragma once

#include <QWidget>

/// Places windows and controls. Positions and sizes are pixels. `sngRate` 0 keeps the form's size, any other value gives
/// it that share of the size that it is placed over. A maximized form is left alone.
class clsFormPosition
{
public:
    void CenterMain(const QWidget &mainForm, QWidget &form, float sngRate = 0) const;
    void CenterScreen(QWidget &form, float sngRate = 0) const;
    /// Moves a control to the middle of the form's inner area; larger than the form, it hangs over on both sides.
    void CenterForm(const QWidget &form, QWidget &control) const;
    /// The same, but never left of or above the container.
    void CenterControl(const QWidget &container, QWidget &control) const;
    /// Centres two controls as a stack, the first above the second; never left of or above the container.
    void CenterTwoControl(const QWidget &container, QWidget &first, QWidget &second) const;
    /// Into the lower right corner of a window of the reference form's size at the screen's origin, or of the screen where
    /// the form would not fit.
    void LocateFormBottomRight(const QWidget &referenceForm, QWidget &form) const;
};
