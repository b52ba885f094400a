#pragma once

#include <QElapsedTimer>
#include <QString>

namespace terminal {

/// One line on the terminal that counts while a long work runs. While it lives, Ctrl+C asks the work to stop. One at a
/// time in a program.
class ProgressLine
{
public:
    /// `what` stands before the figures, as in "주문 1,000 / 2,000 (50%)".
    explicit ProgressLine(const QString &what);
    ~ProgressLine();
    ProgressLine(const ProgressLine &) = delete;
    ProgressLine &operator=(const ProgressLine &) = delete;

    /// Shows how far the work is; false once it should stop.
    bool show(qint64 done, qint64 total);
    bool stopAsked() const;
    /// Puts "DONE (1.2초): WHAT" in the line's place.
    void finish(const QString &done, const QString &what);
    /// Leaves the line as it is and begins a new one below.
    void leave();

private:
    const QString what_;
    QElapsedTimer sinceStart_;
    qint64 lastShown_;
    qint64 shownDone_ = -1;
    bool shown_ = false;
    void (*const previous_)(int);
};

} // namespace terminal
