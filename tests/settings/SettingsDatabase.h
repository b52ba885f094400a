#pragma once

#include "tests/support/SaleDatabase.h"

#include <QTemporaryDir>

/// A clinic's database as the session's connection, and a program folder of its own.
class SettingsDatabase : public SaleDatabase
{
protected:
    SettingsDatabase() { gstrAppPath = folder_.path() + QLatin1Char('/'); }
    ~SettingsDatabase() override { gstrAppPath.clear(); }

    /// "key|value" of every stored property, in the order of the keys.
    Rows properties() { return rows("SELECT tpsps_Key, tpsps_Value FROM tPSProperties ORDER BY tpsps_Key"); }

    QTemporaryDir folder_;
};
