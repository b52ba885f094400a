#pragma once

#include "desk/schema/Schema.h"
#include "session/modGlobalVars.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

/// An empty clinic database as the session's connection, and a program folder of its own.
class SettingsDatabase : public testing::Test
{
protected:
    SettingsDatabase()
    {
        gcnnMasterDB = ado::Connection::open(QStringLiteral("sqlite:") + folder_.filePath("clinic.db"), true);
        schema::createSchema(*gcnnMasterDB);
        gstrAppPath = folder_.path() + QLatin1Char('/');
    }
    ~SettingsDatabase() override
    {
        gcnnMasterDB.reset();
        gstrAppPath.clear();
    }

    /// "key=value" of every stored property, in the order of the keys; NULL is "NULL".
    QStringList properties() const
    {
        QStringList found;
        const ado::CellTable rows =
            gcnnMasterDB->read("SELECT tpsps_Key, tpsps_Value FROM tPSProperties ORDER BY tpsps_Key");
        for (int row = 0; row < rows.rowCount(); ++row)
            found += rows.raw(row, 0).toString() + QLatin1Char('=')
                     + (rows.raw(row, 1).isValid() ? rows.raw(row, 1).toString() : QStringLiteral("NULL"));
        return found;
    }
    void run(const QString &statement) { gcnnMasterDB->Execute(statement); }

    QTemporaryDir folder_;
};
