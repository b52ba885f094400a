#pragma once

#include "desk/sample/Clinic.h"

#include <QSqlDatabase>

namespace sample {

/// Writes all rows of a small or a large clinic into empty tables. Raises RuntimeError, also when the progress answers
/// false.
void writeRows(const QSqlDatabase &database, Size size, const Progress &progress);

} // namespace sample
