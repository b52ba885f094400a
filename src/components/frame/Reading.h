#pragma once

#include "components/frame/Figure.h"
#include "components/frame/Period.h"

#include <vector>

namespace statistics {

/// The reading of a report's figures, slice by slice, on the connection it was given. A slice takes some hundredths of a
/// second: its width follows what the server needed for the one before.
class Reading
{
public:
    Reading(ado::ConnectionPtr connection, std::vector<Figure> figures, const Period &period);

    /// Reads one slice; raises RuntimeError.
    void step();
    bool isDone() const { return current_ == figures_.size(); }
    /// 0 to 1.
    double progress() const;

    void readAll();

private:
    void enter();
    void run(const QString &statement, const std::function<void(const Record &)> &take) const;
    QString filled(const QString &statement, const QString &from, const QString &to) const;
    QString place(qint64 position) const;
    const Period &period() const;

    ado::ConnectionPtr connection_;
    std::vector<Figure> figures_;
    Period period_;
    std::size_t current_ = 0;
    bool entered_ = false;
    // The current figure, counted in days or keys.
    qint64 lowest_ = 0;
    qint64 next_ = 0;
    qint64 highest_ = 0;
    qint64 width_ = 1;
};

} // namespace statistics
