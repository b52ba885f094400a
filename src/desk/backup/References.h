#pragma once

#include "desk/backup/ReadyTable.h"

namespace backup {

/// Raises RuntimeError that names the tables of other programs which refer, by a foreign key, to rows that would go: such a row
/// is not taken away from under them, nor theirs with it, whatever their key says about that.
void demandNoReferences(ado::Connection &clinic, const std::vector<ReadyTable> &tables);

} // namespace backup
