#pragma once

#include "desk/sample/Clinic.h"

namespace sample {

/// Makes a clinic with one line on the terminal that counts. Ctrl+C stops the work and leaves nothing behind; the result is
/// then 1, otherwise 0. Raises RuntimeError when the clinic cannot be made.
int makeOnTerminal(const QString &address, Size size);

} // namespace sample
