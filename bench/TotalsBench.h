#pragma once

#include "bench/Clinics.h"
#include "bench/Table.h"

namespace bench {

/// Recalculating the totals of an order.
void registerTotals(const Clinics &clinics, Table &table);

} // namespace bench
