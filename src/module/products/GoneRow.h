#pragma once

#include "forms/BoundList.h"
#include "platform/runtime/RuntimeError.h"

/// What the lists do about a row that another desk changed or deleted.

bool isConflict(const runtime::RuntimeError &error);

/// Leaves the row that another desk deleted: the list is read anew, if it can be, and no row is current. Returns what to
/// tell the user; `kind` names what was deleted.
QString leaveGoneRow(BoundList &list, const QString &kind);
