#pragma once

#include "desk/backup/Backup.h"

namespace backup {

/// Into a file of the server's own tool, which is looked through when it is whole.
void dumpPostgresClinic(const QString &address, const QString &target, const Progress &progress);

/// True when there was a clinic before, which is then in the file `safetyCopy`.
bool restorePostgresClinic(const QString &address, const QString &source, const QString &safetyCopy,
                           const Progress &progress);

} // namespace backup
