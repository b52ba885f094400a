#include "desk/terminal/ProgressLine.h"

#include <QLocale>
#include <QTextStream>

#include <csignal>

namespace terminal {

namespace {

constexpr qint64 Interval = 200; // milliseconds between two pictures of the line

volatile std::sig_atomic_t interrupted = 0;

void interrupt(int)
{
    interrupted = 1;
}

} // namespace

ProgressLine::ProgressLine(const QString &what)
    : what_(what)
    , lastShown_(-Interval)
    , previous_(std::signal(SIGINT, interrupt))
{
    sinceStart_.start();
}

ProgressLine::~ProgressLine()
{
    std::signal(SIGINT, previous_);
}

bool ProgressLine::show(qint64 done, qint64 total)
{
    const bool due = done == total ? shownDone_ != done : sinceStart_.elapsed() - lastShown_ >= Interval;
    if (total > 0 && due) {
        lastShown_ = sinceStart_.elapsed();
        shownDone_ = done;
        shown_ = true;
        const QLocale grouping(QLocale::Korean, QLocale::SouthKorea);
        QTextStream(stderr) << QStringLiteral("\r%1 %2 / %3 (%4%)  ")
                                   .arg(what_, grouping.toString(done), grouping.toString(total))
                                   .arg(done * 100 / total)
                            << Qt::flush;
    }
    return !stopAsked();
}

bool ProgressLine::stopAsked() const
{
    return interrupted != 0;
}

void ProgressLine::finish(const QString &done, const QString &what)
{
    const QString seconds = QString::number(double(sinceStart_.elapsed()) / 1000, 'f', 1);
    QTextStream(stderr) << (shown_ ? QStringLiteral("\r") : QString())
                        << QStringLiteral("%1 (%2초): %3").arg(done, seconds, what) << Qt::endl;
}

void ProgressLine::leave()
{
    if (shown_)
        QTextStream(stderr) << "\n";
}

} // namespace terminal
