#pragma once

#include "desk/schema/Schema.h"
#include "session/modGlobalVars.h"

#include <QSqlQuery>
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
        QSqlQuery query(gcnnMasterDB->database());
        query.exec("SELECT tpsps_Key, tpsps_Value FROM tPSProperties ORDER BY tpsps_Key");
        while (query.next())
            found += query.value(0).toString() + QLatin1Char('=')
                     + (query.isNull(1) ? QStringLiteral("NULL") : query.value(1).toString());
        return found;
    }
    bool run(const QString &statement) { return QSqlQuery(gcnnMasterDB->database()).exec(statement); }

    QTemporaryDir folder_;
};
