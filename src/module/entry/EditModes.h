#pragma once

#include "forms/PaneContract.h"

#include <QList>
#include <QString>

#include <vector>

/// Which panes are within reach: all of them while browsing, one while it is in edit. Knows the panes only by the tables
/// that they hand over; owns nothing.
class EditModes
{
public:
    /// Containers that every edit takes out of reach. They are siblings: a child of a disabled container could not be
    /// opened by itself.
    void addContainers(const QList<QWidget *> &containers);
    void addTable(const EditModeTable &table);
    /// A group that no edit mode opens: locked or open from the start.
    void addGroup(const ControlGroup &group, bool open);

    /// All groups as they stand outside an edit, the save buttons hidden.
    void lockAllPanes() const;
    /// Paints, disables all containers and opens the pane of the code; an unknown code opens none.
    void enterEditMode(const QString &code);
    void leaveEditMode(const QString &code);
    void paintEntryColors() const;
    void paintEntryColorsAlt() const;

    bool isInEdit(const QString &code) const { return current_ == code; }
    /// Code of the pane in edit, empty while browsing.
    const QString &current() const { return current_; }

private:
    const EditModeTable *find(const QString &code) const;

    QList<QWidget *> containers_;
    std::vector<EditModeTable> tables_;
    std::vector<std::pair<ControlGroup, bool>> groups_;
    QString current_;
};
