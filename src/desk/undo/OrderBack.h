#pragma once

#include "desk/undo/LostOrder.h"

#include <QStringList>

namespace undo {

struct PutBack
{
    qint64 lines = 0;
    qint64 money = 0;    ///< rows of the ledger
    QStringList notices; ///< what the technician should know
};

/// Writes a lost order with its lines and its money under their own keys: all of it or nothing. Rows that stand there just
/// so are left. Raises RuntimeError when a key is taken or the patient is gone.
PutBack putBack(ado::Connection &connection, const LostOrder &lost);

/// On the terminal: of a backup, or of the clinic's own journal where `source` is "journal". The program's exit status.
int orderOnTerminal(ado::Connection &connection, const QString &source, int order);

} // namespace undo
