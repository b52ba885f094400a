#pragma once

#include "bench/Clinics.h"
#include "bench/Table.h"

namespace bench {

/// Adding a line to an order, from the click on the button until the window is painted.
void registerAddLine(const Clinics &clinics, Table &table);

} // namespace bench
