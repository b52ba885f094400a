#pragma once

#include <QToolButton>
#include <QWidget>

namespace controls {

/// An up-down: two small buttons named NAME_up and NAME_down, kept in step with the widget's own name. They take no focus
/// and repeat while held.
class Stepper : public QWidget
{
    Q_OBJECT
public:
    explicit Stepper(const QString &name, int index = -1, QWidget *parent = nullptr);

signals:
    void up();
    void down();

private:
    QToolButton *up_;
    QToolButton *down_;
};

} // namespace controls
