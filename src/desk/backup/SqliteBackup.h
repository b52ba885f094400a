#pragma once

#include "desk/backup/Backup.h"

namespace backup {

/// Into a new file, which is looked through when it is whole.
void copySqliteClinic(const QString &clinic, const QString &target, const Progress &progress);

/// The clinic that was there before is in the file `safetyCopy` then.
Restored restoreSqliteClinic(const QString &clinic, const QString &source, const QString &safetyCopy, Scope scope,
                             const Progress &progress);

} // namespace backup
