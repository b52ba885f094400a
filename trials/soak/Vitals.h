#pragma once

#include "trials/desk/Journal.h"

#include <QProcess>

namespace trial {

/// What the desks that work from the first minute to the last show in one part of the trial.
struct Vitals
{
    qint64 memory = 0; ///< KiB of the largest, of its own
    int handles = 0;   ///< of the one with most
    int operations = 0;
    double median = 0; ///< milliseconds
    double slow = 0;   ///< 95 of 100 take less
    QString events;
};

/// Raises std::runtime_error when the process is gone.
void look(Vitals &vitals, const QProcess &desk);

/// Counts what was acknowledged between the two moments.
void count(Vitals &vitals, const std::vector<std::vector<Deed>> &journals, qint64 from, qint64 to);

void printHead();
void print(int part, const Vitals &vitals);

/// The medians of the second sixth beside those of the last one; false when something grew beyond its limit.
bool printWhetherFlat(const std::vector<Vitals> &parts);

} // namespace trial
