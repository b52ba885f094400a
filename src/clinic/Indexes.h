#pragma once

#include <span>

namespace clinic {

/// An index that the statements of a busy desk want.
struct Index
{
    const char *name;
    const char *table;
    const char *columns;
    const char *rows = ""; ///< condition of the rows that stand in it; all rows where it is empty
};

std::span<const Index> indexes();

} // namespace clinic
