#pragma once

#include <QPushButton>

#include <functional>

namespace controls {

/// A check box in button style: a plain push button for keyboard and screen reader, with a value of its own. A click
/// sets the value to 1; any change of the value raises checkClicked().
class PushCheck : public QPushButton
{
    Q_OBJECT
public:
    explicit PushCheck(const QString &caption = QString(), QWidget *parent = nullptr);

    int value() const { return value_; }
    /// Setting 1 runs the button as a click does; an unchanged value raises nothing.
    void setValue(int value);

    /// Installs the handler with the convention of all such buttons: a click with value 0 is ignored, otherwise the value
    /// goes back to 0, the button is repainted, and the work runs inside an event edge.
    void onPush(QObject *context, std::function<void()> work);

signals:
    void checkClicked();

protected:
    /// On a ground of its own the button is drawn flat: the shading of a style would take the contrast of its text.
    void paintEvent(QPaintEvent *event) override;

private:
    int value_ = 0;
};

} // namespace controls
