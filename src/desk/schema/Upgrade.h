#pragma once

#include "platform/ado/Connection.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace schema {

/// One thing in which a database differs from what this program makes, and what mends it.
struct UpgradeStep
{
    QString what; ///< for the technician, in Korean
    QStringList statements;
};

enum class Doors {
    AsTheyAre,
    Locked, ///< on a server nobody connects or makes tables who was not given the right
};

/// What an upgrade would do, by looking at the definitions as they stand; none for a database that has all that this program
/// makes. Tables and columns of the component that are missing are added, and what serves it; other programs' tables,
/// columns, indexes, triggers and views are passed over, and so are the settings and rights of a database. Raises
/// RuntimeError, and names what it is, where something stands in the way that an upgrade can't mend.
std::vector<UpgradeStep> upgradeSteps(ado::Connection &connection, Doors doors = Doors::AsTheyAre);

/// Told before each step; answering false undoes all of them.
using UpgradeProgress = std::function<bool(qint64 done, qint64 total)>;

/// Does it in one transaction, while no desk writes, and tells what it did. Raises RuntimeError, and leaves the database
/// as it was, when it refuses or was stopped.
std::vector<UpgradeStep> upgrade(ado::Connection &connection, const UpgradeProgress &progress = {},
                                 Doors doors = Doors::AsTheyAre);

} // namespace schema
