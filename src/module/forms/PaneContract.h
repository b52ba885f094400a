#pragma once

#include "platform/controls/Palette.h"

#include <QList>
#include <QString>
#include <QWidget>

/// What a pane and the window that holds it agree on.

/// Controls that one call locks or clears together.
using ControlGroup = QList<QWidget *>;

/// The edits, each by the code of the pane that it opens.
namespace editCode {
inline const QString Order = QStringLiteral("00");
inline const QString Ledger = QStringLiteral("02");
inline const QString Product = QStringLiteral("10");
inline const QString Purchase = QStringLiteral("11");
inline const QString Dealer = QStringLiteral("12");
} // namespace editCode

/// Background of one entry control outside or inside an edit.
struct EntryColor
{
    QWidget *control;
    controls::Ground ground;
};

/// One edit mode as a pane hands it to the window.
struct EditModeTable
{
    QString code;                  ///< of editCode; empty where there is no edit, but colours
    QList<QWidget *> containers;   ///< enabled again after all panes have been disabled
    ControlGroup group;            ///< opened, and locked again at the end
    QList<QWidget *> commands;     ///< hidden while in edit
    QList<QWidget *> saveButtons;  ///< shown while in edit
    QList<EntryColor> editColors;  ///< painted on entering
    QList<EntryColor> entryColors; ///< painted by paintEntryColors; their controls go grey in every edit
};

/// What a pane may ask of the window that holds it.
class PaneShell
{
public:
    virtual void enterEditMode(const QString &code) = 0;
    virtual void leaveEditMode(const QString &code) = 0;
    /// The one answer to whether a pane is in edit: none keeps its own.
    virtual bool isInEdit(const QString &code) const = 0;
    virtual void paintEntryColors() = 0;

protected:
    ~PaneShell() = default;
};
