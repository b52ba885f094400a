#pragma once

#include "bench/Clinics.h"
#include "bench/Table.h"

namespace bench {

/// Loading the sale tab's product list.
void registerProductList(const Clinics &clinics, Table &table);

} // namespace bench
