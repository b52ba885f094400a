#pragma once

#include "platform/ado/Connection.h"

namespace central {

/// Whether the database keeps the list of a chain.
bool isHeadOffice(const ado::Connection &connection);
/// Makes it so: its products have revisions from now on. All or nothing; raises RuntimeError.
void makeHeadOffice(ado::Connection &connection);

} // namespace central
