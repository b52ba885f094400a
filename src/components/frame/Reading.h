#pragma once

#include "components/frame/Figure.h"
#include "components/frame/KeptRows.h"
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
    using Slice = std::shared_ptr<const ado::CellTable>;

    void begin();
    void enter();
    Slice read(const QString &statement) const;
    void readSlice();
    void take(const Slice &slice);
    void end();
    /// The one for this engine.
    const QString &statementOf(const Figure &figure) const;
    QString filled(const QString &statement, const QString &from, const QString &to) const;
    QString position(qint64 number) const;
    /// The current figure's statement, and the days where it has some.
    QString keptUnder() const;
    const Period &period() const;

    ado::ConnectionPtr connection_;
    std::vector<Figure> figures_;
    Period period_;
    std::size_t current_ = 0;
    bool begun_ = false;
    bool entered_ = false;
    // Of figures that are kept.
    QByteArray state_; ///< of the database, at the beginning
    QHash<QString, KeptRows::Slices> rows_;
    KeptRows::Slices kept_; ///< the current figure's
    // The current figure, counted in days, keys or kept slices.
    qint64 lowest_ = 0;
    qint64 next_ = 0;
    qint64 highest_ = 0;
    qint64 width_ = 1;
};

} // namespace statistics
