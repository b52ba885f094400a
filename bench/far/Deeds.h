#pragma once

#include "bench/SaleWindow.h"

#include <functional>
#include <vector>

namespace bench {

/// One thing that a user does in the window of a patient.
struct Deed
{
    const char *what;
    int least;       ///< ways to the server and back that no program could do without
    const char *why; ///< which they are
    std::function<void(SaleWindow &window)> run;
    bool writes = false;
    std::function<void(SaleWindow &window)> prepare = {}; ///< not counted
};

/// In the order in which they are done: each finds what the one before it left.
const std::vector<Deed> &deeds();

} // namespace bench
