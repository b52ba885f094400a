#pragma once

#include "platform/runtime/Currency.h"

/// The amount as it may be stored. Raises TypeMismatch for one with parts of a won, which not every engine keeps.
runtime::Currency wholeWon(runtime::Currency amount);
