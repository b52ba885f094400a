#pragma once

#include <QString>

namespace runtime {

/// Where layout files and the logo lie, ending in exactly one separator: the folder of the running program. An installed
/// program's folder takes no user's files; then it is the user's own data folder for this program.
QString programFolder();

/// Takes another folder in the place of the program's, for a trial run that must leave what lies there alone. The empty text
/// goes back.
void setProgramFolder(const QString &folder);

} // namespace runtime
