#pragma once

#include <QStringList>

namespace backup {

// What stands before and behind a backup when it comes into a server's database that has no clinic, in the same transaction.

/// Makes what stands beside the tables and is in no backup.
QString beforeFirstRestore();
/// Lets no counter fall behind, writes down the version that the backup had, and counts the restore.
QString afterFirstRestore(int version);

// A backup's tables come into the schema that they were in, in the server's spelling.
/// Makes one that is not there.
QString makeRoomIn(const QString &schema);
/// Brings them to where the database looks for tables, if it does not look there, and takes an emptied one away.
QString bringOutOf(const QString &schema);

/// Gives a text for the table that only the same rows give.
QString rowSumStatement(const QString &table);
/// Refuses the transaction unless the tables hold the rows that gave "TABLE SUM", a line each.
QString demandRows(const QStringList &rowSums);

} // namespace backup
