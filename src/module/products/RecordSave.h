#pragma once

#include "platform/ado/Recordset.h"

#include <functional>

/// How the save of a panel ended.
enum class SaveOutcome {
    Saved,
    Refused, ///< something that must be filled in is missing; the panel stays in edit
    TooMuch, ///< a number is beyond what may be stored; the panel stays in edit
    Failed,  ///< an error was trapped and all of it rolled back
};

/// Runs `work` on the rows between begin and commit on gcnnMasterDB, under a trap: after an error nothing of it is stored and
/// nothing stays pending. A refusal leaves the transaction and what is pending as they are; the next save goes over them,
/// and the end of the event rolls back a transaction that nobody goes on with.
SaveOutcome saveTrapped(ado::Recordset &rows, const std::function<SaveOutcome()> &work);

/// First value of a counting statement as a 16-bit integer, at most 32,767. `ifEmpty` when it gives no row.
qint16 countOf(const ado::ConnectionPtr &connection, const QString &statement, const QString &field, qint16 ifEmpty);
