#include "session/modGlobalVars.h"

ado::ConnectionPtr gcnnMasterDB;
QString gstrAppPath;
bool gbProductServerLinked = false;
