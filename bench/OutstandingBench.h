#pragma once

#include "bench/Clinics.h"
#include "bench/Table.h"

namespace bench {

/// Everybody's outstanding money in its window: the first screen, and the sums.
void registerOutstanding(const OrderedClinic &clinic, Table &table);

} // namespace bench
