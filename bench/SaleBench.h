#pragma once

#include "bench/Clinics.h"
#include "bench/Table.h"

namespace bench {

/// What selling writes: a line more, the first payment, an order deleted, without the window.
void registerSale(const Clinics &clinics, Table &table);
/// In one clinic; `note` tells it from another of its size.
void registerWriting(const OrderedClinic &clinic, Table &table, const std::string &note = {});

} // namespace bench
