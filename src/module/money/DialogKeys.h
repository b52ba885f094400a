#pragma once

#include <QAbstractButton>
#include <QDialog>
#include <QHash>

/// The keyboard of a money dialog. F12 presses one button and F9 another, once however long they are held; with Ctrl the
/// arrows down and up go on and back; Enter goes on. No button answers Enter by itself.
class DialogKeys : public QObject
{
    Q_OBJECT
public:
    /// How a control takes part.
    enum Habit {
        MovesByArrows = 1, ///< the bare arrows go on and back too
        DigitsOnly = 2,    ///< 0 to 9 and Backspace; no other character is taken
        SelectsOnFocus = 4,
    };

    /// To be made when all controls of the dialog stand. Belongs to the dialog.
    DialogKeys(QDialog *dialog, QAbstractButton *f12, QAbstractButton *f9);

    /// Habits of one control, added up.
    void setHabits(QWidget *control, int habits);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool keyPressed(QWidget *control, const QKeyEvent &event);
    bool pressesButton(const QKeyEvent &event);

    QAbstractButton *f12_;
    QAbstractButton *f9_;
    QHash<const QObject *, int> habits_;
    bool focusCameByMouse_ = false;
    bool pressBroughtFocus_ = false;
};
