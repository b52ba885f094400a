#pragma once

#include "bench/Clinics.h"
#include "bench/Table.h"

namespace bench {

/// A month of each report, read as the report reads it.
void registerStatistics(const Clinics &clinics, Table &table);

} // namespace bench
