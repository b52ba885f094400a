#pragma once

#include "desk/backup/Backup.h"

namespace backup {

/// Into a new file, which is looked through when it is whole.
void copySqliteClinic(const QString &clinic, const QString &target, const Progress &progress);

/// True when there was a clinic before, which is then in the file `safetyCopy`.
bool restoreSqliteClinic(const QString &clinic, const QString &source, const QString &safetyCopy,
                         const Progress &progress);

} // namespace backup
