#include "entry/EditModes.h"

#include "forms/clsMyFunctions.h"
#include "platform/controls/Appearance.h"

#include <algorithm>

namespace {

void setAllEnabled(const QList<QWidget *> &widgets, bool enabled)
{
    for (QWidget *widget : widgets)
        widget->setEnabled(enabled);
}

void setAllVisible(const QList<QWidget *> &widgets, bool visible)
{
    for (QWidget *widget : widgets)
        widget->setVisible(visible);
}

void paint(const QList<EntryColor> &colors)
{
    for (const EntryColor &entry : colors)
        controls::setGround(entry.control, entry.ground);
}

} // namespace

void EditModes::addContainers(const QList<QWidget *> &containers)
{
    containers_ += containers;
}

void EditModes::addTable(const EditModeTable &table)
{
    tables_.push_back(table);
}

void EditModes::addGroup(const ControlGroup &group, bool open)
{
    groups_.emplace_back(group, open);
}

const EditModeTable *EditModes::find(const QString &code) const
{
    const auto found =
        std::find_if(tables_.begin(), tables_.end(), [&](const EditModeTable &table) { return table.code == code; });
    return found == tables_.end() ? nullptr : &*found;
}

void EditModes::lockAllPanes() const
{
    clsMyFunctions functions;
    for (const EditModeTable &table : tables_) {
        functions.setCollection2Locked(table.group, true);
        setAllVisible(table.saveButtons, false);
    }
    for (const auto &[group, open] : groups_)
        functions.setCollection2Locked(group, !open);
}

void EditModes::enterEditMode(const QString &code)
{
    paintEntryColorsAlt();
    setAllEnabled(containers_, false);
    current_ = code;
    const EditModeTable *table = find(code);
    if (!table)
        return;
    setAllEnabled(table->containers, true);
    clsMyFunctions().setCollection2Locked(table->group, false);
    setAllVisible(table->commands, false);
    setAllVisible(table->saveButtons, true);
    paint(table->editColors);
}

void EditModes::leaveEditMode(const QString &code)
{
    if (isInEdit(code))
        current_.clear();
    setAllEnabled(containers_, true);
    const EditModeTable *table = find(code);
    if (!table)
        return;
    clsMyFunctions().setCollection2Locked(table->group, true);
    setAllVisible(table->commands, true);
    setAllVisible(table->saveButtons, false);
}

void EditModes::paintEntryColors() const
{
    for (const EditModeTable &table : tables_)
        paint(table.entryColors);
}

void EditModes::paintEntryColorsAlt() const
{
    using controls::Ground;
    for (const EditModeTable &table : tables_) {
        for (const EntryColor &entry : table.entryColors) {
            // Quirk (docs/architecture.md): this option keeps the button face while all others go grey.
            const bool keepsButtonFace = entry.control->objectName() == QLatin1String("optIsTaxed_1");
            controls::setGround(entry.control, keepsButtonFace ? Ground::Face : Ground::OutOfReach);
        }
    }
}
