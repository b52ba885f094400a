#pragma once

#include "bench/Clinics.h"
#include "bench/Table.h"

namespace bench {

/// Filling the product names of an order's lines.
void registerNames(const Clinics &clinics, Table &table);

} // namespace bench
