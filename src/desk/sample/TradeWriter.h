#pragma once

#include "desk/sample/Clinic.h"

namespace sample {

/// Writes all rows of a small or a large clinic into empty tables. Raises RuntimeError, also when the progress answers
/// false.
void writeRows(ado::Connection &connection, Size size, const Progress &progress);

} // namespace sample
