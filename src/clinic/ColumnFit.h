#pragma once

#include "clinic/Tables.h"

#include <QString>

namespace clinic {

/// Why a column is not of a type that the system's values fit.
struct Misfit
{
    bool loses = false;        ///< what is sold could not be saved in it, or not as it is; else it works, with less
    const char *why = nullptr; ///< null where it fits
};

/// `type` in the engine's words. A file's engine keeps any value in any column that is not of its strict kind, so what
/// counts there is what it makes of it on the way.
Misfit misfitOf(const Column &column, const QString &type, bool embedded);

} // namespace clinic
