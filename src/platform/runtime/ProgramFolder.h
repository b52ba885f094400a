#pragma once

#include <QString>

namespace runtime {

/// The folder of the running program, ending in exactly one separator. Layout files and the logo lie there.
QString programFolder();

/// Takes another folder in its place, for a trial run that must leave what lies there alone. The empty text goes back.
void setProgramFolder(const QString &folder);

} // namespace runtime
