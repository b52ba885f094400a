#pragma once

#include <QString>

namespace backup {

/// Restores a backup into a database that is made for it and goes again, and examines that as a clinic. One of a server
/// needs the server's address for it and a role that may make databases; the clinic there is not touched. Raises
/// RuntimeError when it cannot be restored; otherwise the exit status of the examination.
int verifyOnTerminal(const QString &address, const QString &file);

} // namespace backup
