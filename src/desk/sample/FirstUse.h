#pragma once

#include <QString>

namespace sample {

/// Sees to it that the small clinic is in the file. Of desks that start at once one makes it, the others wait and take it.
/// Raises RuntimeError.
void makeOnFirstUse(const QString &file);

} // namespace sample
