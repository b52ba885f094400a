#pragma once

#include <QString>

namespace files {

/// Why a desk could not work there, in a text for its user that names the place; empty when it can. What does not exist is
/// made, where it is a folder, and no trouble, where it is a file.
QString troubleWithFolder(const QString &folder);
/// The embedded engine writes beside its file, too.
QString troubleWithDatabase(const QString &file);

} // namespace files
