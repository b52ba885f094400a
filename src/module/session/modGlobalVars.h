#pragma once

#include "platform/ado/Connection.h"

#include <QString>

/// What a session shares with the whole module; set by the entries. Nothing else is global.

/// The host's open connection, never opened or closed here; null until an entry has set it.
extern ado::ConnectionPtr gcnnMasterDB;
/// The program folder (runtime::programFolder), ending in exactly one separator.
extern QString gstrAppPath;
/// True when a central product server is named by the settings, also when it later fails.
extern bool gbProductServerLinked;
