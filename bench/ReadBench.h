#pragma once

#include "bench/Clinics.h"
#include "bench/Table.h"

namespace bench {

/// What is read when a patient or an order is chosen, and the orders with outstanding money.
void registerRead(const OrderedClinic &clinic, Table &table);

} // namespace bench
