#pragma once

#include <QToolButton>

namespace desk {

/// A flat button with a gear, in the colour of the window's texts.
class GearButton : public QToolButton
{
    Q_OBJECT
public:
    explicit GearButton(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace desk
