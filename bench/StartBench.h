#pragma once

#include "bench/Clinics.h"
#include "bench/Table.h"

namespace bench {

/// From the start of the process until its first window is painted.
void registerStart(const OrderedClinic &clinic, Table &table);

} // namespace bench
