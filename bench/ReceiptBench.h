#pragma once

#include "bench/Clinics.h"
#include "bench/Table.h"

namespace bench {

/// Composing and drawing page receipts, and their preview.
void registerReceipts(const Clinics &clinics, Table &table);

} // namespace bench
