#pragma once

#include "platform/ado/Connection.h"

namespace journal {

/// What a walk along the journal's chain found.
struct Chain
{
    qint64 rows = 0;
    qint64 open = 0;     ///< rows of other programs that no desk has given a place yet
    qint64 last = 0;     ///< the last place, 0 for none
    QString hash;        ///< that stands there
    qint64 brokenAt = 0; ///< the first place that does not fit the one before; 0 when all do
};

/// Raises RuntimeError where the journal cannot be read.
Chain walk(ado::Connection &connection);

/// A table's rows that are not as the journal last told of them, those that it should know of and does not, and those that
/// it knows of and are not there. One statement; its columns have Korean names.
QString differingRows(const ado::Connection &connection, const QString &table);

} // namespace journal
