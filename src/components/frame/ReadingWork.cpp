#include "components/frame/ReadingWork.h"

#include "platform/controls/EventEdge.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/Operation.h"
#include "platform/runtime/RuntimeError.h"

namespace statistics {

namespace {

constexpr qint64 turnLength = 30;     // ms at one go
constexpr qint64 progressAfter = 500; // ms

} // namespace

ReadingWork::ReadingWork(QObject *parent)
    : QObject(parent)
{
    turns_.setInterval(0);
    connect(&turns_, &QTimer::timeout, this, &ReadingWork::goOn);
}

void ReadingWork::start(Reading reading)
{
    reading_ = std::move(reading);
    since_.start();
    turns_.start();
}

void ReadingWork::cancel()
{
    turns_.stop();
    reading_.reset();
}

void ReadingWork::goOn()
{
    const controls::EventScope scope; // a window that waits for the server stays alive
    const runtime::Operation operation("read report");
    if (reading_->isDone()) { // in a turn of its own, since what is made of the rows takes its time, too
        cancel();
        emit finished();
        return;
    }
    QElapsedTimer turn;
    turn.start();
    try {
        do
            reading_->step();
        while (!reading_->isDone() && turn.elapsed() < turnLength);
    } catch (const runtime::RuntimeError &error) {
        runtime::trapped();
        cancel();
        emit failed(error.description());
        return;
    }
    if (!reading_->isDone() && since_.elapsed() > progressAfter)
        emit progressed(reading_->progress());
}

} // namespace statistics
