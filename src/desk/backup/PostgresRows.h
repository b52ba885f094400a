#pragma once

#include "desk/backup/Backup.h"
#include "platform/ado/Connection.h"

#include <QStringList>

namespace backup {

/// What a backup of a server's clinic says of its rows beside them.
struct RowSums
{
    QStringList sums;      ///< "TABLE SUM"
    QStringList countOnly; ///< tables whose sum was taken over values that are not in the backup
};

/// Makes a clinic's rows on a server those of a script that pg_restore made of a backup, in one transaction. `file` is the
/// backup's name.
void replacePostgresRows(ado::Connection &clinic, const QString &script, const QString &file, const RowSums &sums,
                         Scope scope, const Progress &progress);

} // namespace backup
