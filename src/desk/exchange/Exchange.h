#pragma once

#include "platform/ado/Connection.h"

#include <QString>

namespace exchange {

struct Imported
{
    QString what; ///< "물품"
    qint64 added = 0;
    qint64 changed = 0;
    qint64 same = 0;
    QStringList told; ///< a line for each that was added or changed
};

/// Reads products or patients of a CSV file into the clinic: all of it or nothing. With `dryRun` it only tells what it would
/// do. Raises RuntimeError that names the lines which cannot be taken.
Imported importFile(ado::Connection &connection, const QString &file, bool dryRun = false);

/// The product list as a new CSV file, which importFile takes. Tells how many there are.
qint64 exportProducts(ado::Connection &connection, const QString &file);

/// The same on the terminal; the program's exit status.
int importOnTerminal(ado::Connection &connection, const QString &file, bool dryRun);
int exportOnTerminal(ado::Connection &connection, const QString &file);

} // namespace exchange
