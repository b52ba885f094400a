#pragma once

#include "platform/ado/Connection.h"

namespace trial {

/// What the sessions of a server on this machine take while desks work: one is a process of PostgreSQL.
struct Sessions
{
    int count = 0;
    double own = 0;    ///< megabytes that nobody shares with it, on the average
    double shared = 0; ///< its part of what it shares with others

    /// Those of the clinic; none where the server is another or its processes may not be looked at.
    static Sessions of(ado::Connection &clinic);
};

} // namespace trial
