#pragma once

#include "printing/RollReceipt.h"
#include "printing/RollRows.h"

/// The rows of an order's receipt on paper with this printable width (mm): in the usual template, smaller on a narrower roll;
/// in the narrow one where the letters would become too small.
RollRows composeRoll(const RollReceiptOrder &order, double width);
