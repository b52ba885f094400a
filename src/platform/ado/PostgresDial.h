#pragma once

#include "platform/ado/PostgresAddress.h"

struct pg_conn;

namespace ado {

/// A session with the first of the servers that answers and fits, or one that says why there is none; null when nobody waited
/// for it any longer.
pg_conn *dial(const PostgresParameters &parameters);

/// The same without waiting for it alive; on any thread.
pg_conn *connectTo(const PostgresParameters &parameters);

} // namespace ado
