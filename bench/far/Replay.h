#pragma once

#include "bench/far/Place.h"

#include <vector>

namespace bench {

/// What one round of an action took.
struct Taken
{
    Traffic before; ///< said in the session since the action before it
    Traffic traffic;
    double milliseconds = 0;
    double bare = 0;   ///< without the desk: the least waits, the server's work, and the cells copied
    QString rows = {}; ///< the orders' behind it (Place::rows); empty where nobody looked
};

/// One action of a session.
struct Step
{
    const char *what;
    int least;       ///< ways to the server and back that no program could do without
    const char *why; ///< which they are
    Taken taken;
};

/// What a session said from its first word to its last is said once more by nothing but PostgreSQL's own library, through the
/// same wire. It goes to the copy of the clinic, to which all was said that was said to the clinic before: each statement finds
/// what it found there. Adds to each action's bare time, a wait above the least taken off. Raises std::runtime_error where
/// anything that was sent, answered or then stored is not the same.
void replay(Place &place, std::vector<Step> &session);

} // namespace bench
