#pragma once

#include "platform/ado/CellTable.h"

#include <QString>

#include <memory>

struct pg_result;

namespace ado {

/// What the server answered to a statement; gone with the last who looks at it.
using PostgresResult = std::shared_ptr<pg_result>;

/// Takes over what the client library gives; null stays null.
PostgresResult ownedResult(pg_result *result);

/// The rows of an answer. Many stay where the library has put them: to copy them would take as long as to read them. A few are
/// copied, for the library's blocks are large.
CellTable rowsOf(const PostgresResult &result, const QString &statement);

} // namespace ado
