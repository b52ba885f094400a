#pragma once

#include "bench/Clinics.h"
#include "bench/Table.h"

namespace bench {

/// A month of each report, read as the report reads it.
enum class Span { Month, Year };
void registerStatistics(const OrderedClinic &clinic, Table &table, Span span = Span::Month);

} // namespace bench
