#pragma once

#include "bench/Clinics.h"
#include "bench/Table.h"

namespace bench {

/// What somebody at the desk waits for: from the key or the call until the window is painted.
void registerWindow(const Clinics &clinics, Table &table);
void registerOpening(const OrderedClinic &clinic, Table &table);

} // namespace bench
