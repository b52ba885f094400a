#pragma once

#include "desk/check/Examination.h"

#include <vector>

namespace check {

/// What the journal of changes says of itself and of the rows; nothing in a database without one.
class JournalExamination
{
public:
    explicit JournalExamination(ado::Connection &connection, std::chrono::milliseconds pause = UsualPause);

    const std::vector<Finding> &findings() const { return findings_; }
    /// A line for the technician to keep: the last place and its hash. Only with them can somebody tell later that the
    /// whole chain was made anew.
    const QString &note() const { return note_; }

private:
    void examineChain(ado::Connection &connection);

    std::vector<Finding> findings_;
    QString note_;
};

} // namespace check
