#pragma once

#include "platform/ado/Connection.h"

#include <QString>

namespace statistics {

/// The name that the shop bears on its receipts; empty where it has none, or where it cannot be read now.
QString shopName(const ado::ConnectionPtr &connection);

} // namespace statistics
