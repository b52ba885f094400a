#pragma once

#include <QString>

namespace automation {

/// The loaded library, or the program, whose code or constants hold the address; null when the system cannot tell.
const void *libraryHolding(const void *address);
/// Its file, in full; empty when the system cannot tell.
QString libraryFileHolding(const void *address);

} // namespace automation
