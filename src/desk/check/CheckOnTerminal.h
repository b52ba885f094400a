#pragma once

#include "platform/ado/Connection.h"

namespace check {

/// Examines a clinic and tells on the terminal, a line a query, what it found. The program's exit status: 0 nothing, 1
/// violations, 2 a query could not run.
int checkOnTerminal(ado::Connection &connection);

} // namespace check
