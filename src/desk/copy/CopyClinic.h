#pragma once

#include "platform/ado/Connection.h"

#include <QString>

#include <functional>
#include <vector>

/// A clinic into another database, of another engine if need be.
namespace copy {

/// Told now and then; answering false stops the work. May be empty.
using Progress = std::function<bool(qint64 done, qint64 total)>;

struct Copied
{
    struct Table
    {
        QString name;
        qint64 rows = 0;
    };
    std::vector<Table> tables; ///< with the journal, where that went along
    qint64 journalLeft = 0;    ///< rows of a broken journal, which begins anew
};

/// Copies all rows of the ten tables and the journal, as they are at one moment while desks are at work, into the database
/// at the address, which must be empty: all of it or nothing. A file of the embedded engine is made. What came to stand
/// there is read again and compared before it counts. Raises RuntimeError, also when the progress function stopped it.
Copied copyClinic(ado::Connection &source, const QString &address, const Progress &progress = {});

/// The same on the terminal, with a line that counts. The program's exit status: 0 done, 1 stopped by Ctrl+C.
int copyOnTerminal(ado::Connection &source, const QString &address);

} // namespace copy
