#include "bench/reports/ReportTimes.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <malloc.h>

namespace bench {

namespace {

/// A line of the kernel's account of this program, in kB.
long accountOf(const QByteArray &line)
{
    QFile account(QStringLiteral("/proc/self/status"));
    if (!account.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = account.readAll();
    return text.mid(text.indexOf(line + ':') + line.size() + 1).simplified().split(' ').front().toLong();
}

/// From here on the most that is resident is counted anew.
void forgetPeak()
{
    malloc_trim(0); // what an earlier report has left does not hide what this one takes
    QFile references(QStringLiteral("/proc/self/clear_refs"));
    if (references.open(QIODevice::WriteOnly))
        references.write("5");
}

bool tellsProgress(const statistics::ReportWindow &window)
{
    return window.findChild<QProgressBar *>(QStringLiteral("prgReading"))->isVisible();
}

} // namespace

ReportTimes worst(const ReportTimes &one, const ReportTimes &other)
{
    return {std::max(one.whole, other.whole), std::max(one.longest, other.longest),
            std::max(one.firstSign, other.firstSign), std::max(one.memory, other.memory)};
}

ReportTimes untilRead(const statistics::ReportWindow &window)
{
    forgetPeak();
    const long before = accountOf("VmRSS");
    ReportTimes times;
    QElapsedTimer sinceStart;
    sinceStart.start();
    bool painted = false;
    while (window.isReading() || !painted) {
        painted = !window.isReading(); // one more turn, for what is shown now
        QElapsedTimer turn;
        turn.start();
        QApplication::processEvents();
        times.longest = std::max(times.longest, turn.elapsed());
        if (times.firstSign == 0 && tellsProgress(window))
            times.firstSign = sinceStart.elapsed();
    }
    times.whole = sinceStart.elapsed();
    times.memory = accountOf("VmHWM") - before;
    return times;
}

qint64 untilStopped(const statistics::ReportWindow &window)
{
    while (window.isReading() && !tellsProgress(window))
        QApplication::processEvents();
    if (!window.isReading())
        return -1;
    QElapsedTimer sincePressed;
    sincePressed.start();
    window.findChild<QPushButton *>(QStringLiteral("cmdCancel"))->click();
    do
        QApplication::processEvents();
    while (window.isReading());
    return sincePressed.elapsed();
}

} // namespace bench
