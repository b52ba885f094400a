#pragma once

#include "platform/print/Document.h"
#include "platform/print/RollPaper.h"

namespace print {

/// The one long page of `strip`, whose places count from the corner that can be printed, on sheets of the paper: one, or as
/// many as it takes. A sheet ends only at one of `breaks` (heights on the strip, from the top to the bottom; the first is
/// where the strip begins), so that each piece stands whole on one sheet. Raises InvalidCall when a piece is higher than a
/// sheet.
Document onSheets(const Document &strip, const std::vector<double> &breaks, const RollPaper &paper, double feed);

} // namespace print
