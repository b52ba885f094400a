#pragma once

#include "platform/ado/Foresight.h"

#include <QString>

#include <functional>

/// Each restore of a backup counts a number in the database up. A window that was open meanwhile still shows what was there
/// before it, and keys may name other rows now: nothing may be written by them.
namespace restoreMark {

/// Takes what the connection shows now for what the lists are read from. `another` is called at the first write that is
/// refused because of a restore, while its transaction is still open. A database without such a mark is not watched.
void remember(const ado::ConnectionPtr &connection, std::function<void()> another);

/// Tells what that reads.
void tell(ado::Foresight &next);

/// The further condition of a row that is held, " AND ..."; empty where the database is not watched.
QString unchangedCondition(const ado::Connection &connection);

/// Raises Conflict, with a text that says why, when a backup was restored since.
void require(const ado::Connection &connection);

} // namespace restoreMark
