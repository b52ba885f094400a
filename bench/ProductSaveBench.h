#pragma once

#include "bench/Clinics.h"
#include "bench/Table.h"

namespace bench {

/// Saving a product, alone and with the list read anew behind it.
void registerProductSave(const Clinics &clinics, Table &table);

} // namespace bench
