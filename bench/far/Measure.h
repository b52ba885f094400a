#pragma once

#include "bench/far/Place.h"

#include <vector>

namespace bench {

/// What one round of an action took.
struct Taken
{
    Traffic traffic;
    double milliseconds = 0;
};

struct Action
{
    const char *what;
    int least;       ///< ways to the server and back that no program could do without
    const char *why; ///< which they are
    std::vector<Taken> rounds;
};

/// Everything that a desk's user does, the program's start included, as often as asked. Raises std::runtime_error where one was
/// not done.
std::vector<Action> measure(Place &place, int rounds);

} // namespace bench
