#pragma once

#include "desk/backup/Backup.h"

namespace backup {

/// Into a file of the server's own tool, which is looked through when it is whole.
void dumpPostgresClinic(const QString &address, const QString &target, const Progress &progress);

/// The clinic that was there before is in the file `safetyCopy` then.
Restored restorePostgresClinic(const QString &address, const QString &source, const QString &safetyCopy, Scope scope,
                               const Progress &progress);

} // namespace backup
