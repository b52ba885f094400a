#pragma once

#include "components/frame/ReportWindow.h"

namespace bench {

/// How a report's window did while it read.
struct ReportTimes
{
    qint64 whole = 0;     ///< ms from the choice until the report is painted
    qint64 longest = 0;   ///< ms in which the window answered nothing
    qint64 firstSign = 0; ///< ms until it showed how far it is; 0 where it had not to
    long memory = 0;      ///< most that it took meanwhile, kB
};

ReportTimes worst(const ReportTimes &one, const ReportTimes &other);

/// Lets the window read, as it has begun to, until the report is painted.
ReportTimes untilRead(const statistics::ReportWindow &window);
/// Lets it read until it shows how far it is, presses "중지" and gives the ms from there until it has stopped; -1 where it
/// was done before.
qint64 untilStopped(const statistics::ReportWindow &window);

} // namespace bench
