#pragma once

#include "bench/far/Replay.h"

namespace bench {

struct Action
{
    const char *what;
    int least;       ///< ways to the server and back that no program could do without
    const char *why; ///< which they are
    std::vector<Taken> rounds;
};

/// Everything that a desk's user does, the program's start included, as often as asked, and the same without the desk. Beside the
/// start goes a program that ends when its empty window is painted, where one is named. Raises std::runtime_error where an action
/// was not done.
std::vector<Action> measure(Place &place, int rounds, const QString &emptyWindow = {});

} // namespace bench
