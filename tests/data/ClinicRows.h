#pragma once

#include <span>

namespace clinic {

/// One statement a table, the keys given.
std::span<const char16_t *const> insertStatements();

} // namespace clinic
