#pragma once

#include "platform/ado/Connection.h"

namespace chain {

/// `desk --central` and `desk --head-office`; the program's exit status. Raise RuntimeError.
int linkOnTerminal(const ado::ConnectionPtr &clinic, const QString &address);
int makeHeadOfficeOnTerminal(const ado::ConnectionPtr &connection);

} // namespace chain
