#pragma once

#include <QObject>

namespace desk {

/// Tells when the first window of the program is painted and waits for its user.
class FirstPaint : public QObject
{
    Q_OBJECT
public:
    explicit FirstPaint(QObject *parent = nullptr);

signals:
    void happened();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace desk
