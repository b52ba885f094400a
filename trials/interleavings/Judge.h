#pragma once

#include "trials/interleavings/Play.h"

#include <map>

namespace trial {

/// Knows what each operation does when it runs alone, and says whether what several did at once is what they told.
class Judge
{
public:
    /// Runs every operation alone. Raises std::runtime_error when one is refused then.
    Judge(Stage &stage, Desks &desks);

    /// Statements of the operation when it runs alone.
    int statements(int operation) const { return alone_[std::size_t(operation)].statements; }

    /// What is wrong; empty when nothing is. The clinic is as the operations left it.
    QStringList faults(const std::vector<int> &operations, const Played &played);

private:
    struct Alone
    {
        std::vector<Change> steps; ///< saved one after the other; the first of them is nothing
        int statements = 0;
    };

    Alone runAlone(int operation);
    void checkTold(const std::vector<int> &operations, const Played &played, QStringList &faults) const;
    void checkConflict(const std::vector<int> &operations, const Played &played, std::size_t desk,
                       QStringList &faults) const;
    void checkRows(const std::vector<int> &operations, const Played &played, QStringList &faults);

    Stage &stage_;
    Desks &desks_;
    Rows before_;
    std::vector<Alone> alone_;
    std::map<Rows, QStringList> violations_; ///< the same rows come again and again
};

} // namespace trial
