#include "platform/controls/ComboSpoken.h"

#include <QAbstractItemView>
#include <QLineEdit>

namespace controls {

ComboSpoken::ComboSpoken(QComboBox *combo)
    : QAccessibleWidget(combo, QAccessible::ComboBox)
{
}

int ComboSpoken::childCount() const
{
    return combo()->isEditable() ? 2 : 1; // the list, the line that is typed into
}

QAccessibleInterface *ComboSpoken::child(int index) const
{
    if (index == 0)
        return QAccessible::queryAccessibleInterface(combo()->view());
    return index == 1 && combo()->isEditable() ? QAccessible::queryAccessibleInterface(combo()->lineEdit()) : nullptr;
}

int ComboSpoken::indexOfChild(const QAccessibleInterface *child) const
{
    for (int index = 0; index < childCount(); ++index) {
        const QAccessibleInterface *own = this->child(index);
        if (own && child && own->object() == child->object())
            return index;
    }
    return -1;
}

QString ComboSpoken::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Value)
        return combo()->currentText();
    return QAccessibleWidget::text(kind);
}

QAccessible::State ComboSpoken::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = true;
    state.expanded = combo()->view()->isVisible();
    state.editable = combo()->isEditable();
    return state;
}

QStringList ComboSpoken::actionNames() const
{
    return {showMenuAction(), pressAction()};
}

void ComboSpoken::doAction(const QString &action)
{
    if (!actionNames().contains(action) || !combo()->isEnabled())
        return;
    if (combo()->view()->isVisible())
        combo()->hidePopup();
    else
        combo()->showPopup();
}

} // namespace controls
