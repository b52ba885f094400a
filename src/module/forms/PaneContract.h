#pragma once

#include <QColor>
#include <QList>
#include <QString>
#include <QWidget>

/// What a pane and the window that holds it agree on.

/// Controls that one call locks or clears together.
using ControlGroup = QList<QWidget *>;

/// Back colour of one entry control outside or inside an edit.
struct EntryColor
{
    QWidget *control;
    QColor color;
};

/// One edit mode as a pane hands it to the window.
struct EditModeTable
{
    QString code;                   ///< "00", "02", "10", "11" or "12"
    QList<QWidget *> containers;    ///< enabled again after all panes have been disabled
    ControlGroup group;             ///< opened, and locked again at the end
    QList<QWidget *> commands;      ///< hidden while in edit
    QList<QWidget *> saveButtons;   ///< shown while in edit
    QList<EntryColor> editColors;   ///< painted on entering
    QList<QWidget *> entryControls; ///< all controls that take the two paint sets
    QList<EntryColor> entryColors;  ///< painted by paintEntryColors
};

/// What a pane may ask of the window that holds it.
class PaneShell
{
public:
    virtual void enterEditMode(const QString &code) = 0;
    virtual void leaveEditMode(const QString &code) = 0;
    virtual void paintEntryColors() = 0;

protected:
    ~PaneShell() = default;
};
