#pragma once

#include "desk/backup/Backup.h"

namespace backup {

/// Makes a clinic's rows in its file those of a backup, in one transaction.
void replaceSqliteRows(const QString &clinic, const QString &backup, Scope scope, const Progress &progress);

} // namespace backup
