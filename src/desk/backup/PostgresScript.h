#pragma once

#include <QStringList>

namespace backup {

// What stands before and behind the rows of a backup when they come into a server's database, in the same transaction.

/// Holds an old clinic's tables and remembers its counters.
QString beforeRestore();
/// Gives an empty database what stands beside the tables and is in no backup.
QString beforeFirstRestore();
/// Lets no counter fall behind, writes down the version that the backup had, and counts the restore.
QString afterRestore(int version);

/// Gives a text for the table that only the same rows give.
QString rowSumStatement(const QString &table);
/// Refuses the transaction unless the tables hold the rows that gave "TABLE SUM", a line each.
QString demandRows(const QStringList &rowSums);

} // namespace backup
