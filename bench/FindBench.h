#pragma once

#include "bench/Clinics.h"
#include "bench/Table.h"

namespace bench {

/// Finding a product by typing, in the list of the sale and in that of the management.
void registerFind(const Clinics &clinics, Table &table);

} // namespace bench
