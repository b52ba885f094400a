#pragma once

#include "components/frame/Reading.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <optional>

namespace statistics {

/// Drives a reading between the events of the window, which therefore stays alive. One reading at a time: a new one takes
/// the place of that under way.
class ReadingWork : public QObject
{
    Q_OBJECT
public:
    explicit ReadingWork(QObject *parent = nullptr);

    void start(Reading reading);
    void cancel();
    bool isRunning() const { return reading_.has_value(); }

signals:
    /// Raised for work that lasts longer than half a second; 0 to 1.
    void progressed(double part);
    void finished();
    void failed(const QString &description);

private:
    void goOn();

    std::optional<Reading> reading_;
    QTimer turns_;
    QElapsedTimer since_;
};

} // namespace statistics
