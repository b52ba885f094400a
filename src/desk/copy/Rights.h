#pragma once

#include "platform/ado/Connection.h"

#include <QStringList>

namespace copy {

/// What a server's clinic allows to others than its owner, on its tables, columns and functions, as statements that give it
/// again; those of roles that the target's server does not know are left out. None from an engine without rights.
QStringList rightsFor(ado::Connection &source, ado::Connection &target, const QStringList &tables);

} // namespace copy
