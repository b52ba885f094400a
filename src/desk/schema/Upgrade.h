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

/// What an upgrade would do, by looking at the definitions as they stand; none for a database that is as this program
/// makes it. Other programs' columns, indexes, triggers and views are passed over, and so are the settings of a
/// database. Raises RuntimeError where rows stand in the way.
std::vector<UpgradeStep> upgradeSteps(ado::Connection &connection);

/// Told before each step; answering false undoes all of them.
using UpgradeProgress = std::function<bool(qint64 done, qint64 total)>;

/// Does it in one transaction, while no desk writes, and tells what it did. Raises RuntimeError, and leaves the database
/// as it was, when it refuses or was stopped.
std::vector<UpgradeStep> upgrade(ado::Connection &connection, const UpgradeProgress &progress = {});

} // namespace schema
