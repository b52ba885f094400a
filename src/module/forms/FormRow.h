#pragma once

#include "platform/controls/PushCheck.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QList>
#include <QStringList>

/// Puts a caption and its control side by side into two columns of a form: the caption right-aligned, the control's buddy
/// and its accessible name. A control of several lines gets its caption at its top.
void addFormRow(QGridLayout *form, int row, int column, const QString &caption, QWidget *control, int columnSpan = 1);

/// A row is as high with a framed box as with one that is only read: nothing jumps when an edit opens it.
int formRowHeight(const QWidget *form);

/// Gives the caption columns of these forms, each of which has one grid, the width of the longest caption, so that boxes stand
/// in one line.
void alignCaptions(const QList<QWidget *> &forms);

/// What is beside it stays where it is when it is hidden.
void keepPlaceWhenHidden(QWidget *control);

/// Lets a strip's buttons shrink to their captions where the room is short.
void letShrink(const QList<QPushButton *> &buttons);

/// An array of check boxes in button style, NAME_0, NAME_1 and so on.
QList<controls::PushCheck *> makePushChecks(const QString &name, const QStringList &captions, QWidget *parent);

/// Lays out a strip of commands: the last one, which deletes, stands apart; save and cancel, hidden at first, take their
/// place in an edit.
QHBoxLayout *layOutStrip(QWidget *strip, const QList<controls::PushCheck *> &commands,
                         const QList<controls::PushCheck *> &saveButtons);

/// Save and cancel of a form, NAME_0 and NAME_1, hidden at first; the form does not jump when an edit shows them.
QList<controls::PushCheck *> makeSaveButtons(const QString &name, QWidget *form);

/// The two columns of captions and controls of a form beside a list.
QGridLayout *makeFormGrid(QWidget *form);

/// A text box that only shows something: grey, and Tab goes past it, where something can be typed.
QLineEdit *makeShownBox(const QString &name, QWidget *parent = nullptr);

/// A list or panel of a pane under its given name; without a title a plain frame.
QGroupBox *makePanelFrame(const QString &name, int index, const QString &title, QWidget *parent);

/// Tab goes through the controls in this order.
void setTabChain(const QList<QWidget *> &controls);

/// Lays a list and its panel side by side with a divider.
void layOutListAndPanel(QWidget *pane, QWidget *list, QWidget *panel);
