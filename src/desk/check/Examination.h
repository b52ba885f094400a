#pragma once

#include "desk/check/Query.h"
#include "platform/ado/Connection.h"

#include <QStringList>

#include <chrono>

namespace check {

/// What one query found.
struct Finding
{
    Query query;
    qint64 violations = 0;
    QStringList firstRows; ///< "거래번호 12 · 환자번호 3 · ...", at most ShownRows
    QString failure;       ///< why the query could not run; empty when it did
};

inline constexpr int ShownRows = 10;
/// A desk takes a few milliseconds from a line to the order's new total.
inline constexpr std::chrono::milliseconds UsualPause{1'500};

/// Whether the database itself is sound, by its own means; on SQLite only, since a server looks after its files.
Finding examineFile(ado::Connection &connection);

/// Whether tables and columns are such that a sale can be saved in them.
struct SchemaExamination
{
    Finding finding;
    QStringList hints;   ///< what works, slower or with less
    bool isWhole = true; ///< what the queries ask for is there
};
SchemaExamination examineSchema(ado::Connection &connection);

/// Runs one query. Desks may be at work: a row that a desk is just about to put right is gone when the query is asked once
/// more after the pause, so only rows that stand both times count.
Finding examine(ado::Connection &connection, const Query &query, std::chrono::milliseconds pause = UsualPause);

} // namespace check
