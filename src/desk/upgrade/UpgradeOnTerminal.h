#pragma once

#include "desk/schema/Upgrade.h"
#include "platform/ado/Connection.h"

namespace upgrade {

struct Wish
{
    QString backupFile; ///< where the backup goes; a place of its own choice when empty
    bool dryRun = false;
    schema::Doors doors = schema::Doors::AsTheyAre;
};

/// Brings a clinic to what this program makes and tells what it did; a backup goes before. Nothing happens, and no backup
/// is made, where nothing is due. A dry run only tells the statements. The program's exit status: 0 done, 1 stopped by
/// Ctrl+C with nothing changed. Raises RuntimeError when it refuses, nothing changed either.
int upgradeOnTerminal(ado::Connection &connection, const Wish &wish);

} // namespace upgrade
