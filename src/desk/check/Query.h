#pragma once

#include <QString>

#include <vector>

namespace check {

/// One thing that must not be in a clinic's database: every row that the statement gives is a violation.
struct Query
{
    QString title;     ///< what a row is, in Korean
    QString remedy;    ///< what a technician does about it
    QString statement; ///< one SELECT that every engine takes; its column names are shown beside the values
};

/// The queries of host/check/queries in the order of their file names.
std::vector<Query> queries();

/// Reads one file: "-- 제목: ..." and "-- 조치: ..." at its head, other comment lines for its reader, the statement. Raises
/// RuntimeError when one of the three is missing.
Query readQuery(const QString &text);

} // namespace check
