#pragma once

#include <QAccessibleWidget>
#include <QComboBox>

namespace controls {

/// A combo box that is called by its name; the stock one is called by what is chosen in it.
class ComboSpoken : public QAccessibleWidget
{
public:
    explicit ComboSpoken(QComboBox *combo);

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString &action) override;

private:
    QComboBox *combo() const { return static_cast<QComboBox *>(object()); }
};

} // namespace controls
