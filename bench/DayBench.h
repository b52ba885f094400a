#pragma once

#include "bench/Clinics.h"
#include "bench/Table.h"

namespace bench {

/// What somebody at the desk waits for in dialogs and edits, until the window is painted again.
void registerDay(const Clinics &clinics, Table &table);

} // namespace bench
