#pragma once

#include "platform/ado/Connection.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

/// A fresh database with the clinic's tables on one engine, gone with the object.
class TestDatabase
{
public:
    explicit TestDatabase(ado::Engine engine, bool withSchema = true);
    ~TestDatabase();
    TestDatabase(const TestDatabase &) = delete;
    TestDatabase &operator=(const TestDatabase &) = delete;

    /// The desk under test.
    const ado::ConnectionPtr &connection() const { return connection_; }
    /// Another desk on the same database, opened on first use.
    const ado::ConnectionPtr &otherDesk();
    const QString &address() const { return address_; }
    ado::Engine engine() const { return engine_; }
    /// Name of the server's database; empty for SQLite.
    const QString &serverDatabase() const { return serverDatabase_; }

    // Past the layer under test, in a session of their own. Both raise std::runtime_error with the server's words.
    void run(const QString &statement);
    /// Rows as "a|b|c", NULL as "NULL", numbers without trailing zeros.
    QStringList rows(const QString &statement);
    /// The one value of the one row.
    QString value(const QString &statement) { return rows(statement).value(0); }
    /// Qt's name of that session.
    const QString &plainName() const { return plainName_; }

private:
    ado::Engine engine_;
    QTemporaryDir folder_;
    QString serverDatabase_;
    QString address_;
    ado::ConnectionPtr connection_;
    ado::ConnectionPtr otherDesk_;
    QString plainName_;
};

/// For value-parameterised suites: INSTANTIATE_TEST_SUITE_P(Engines, Suite, testing::ValuesIn(allEngines), engineName);
/// MariaDB is left out, with a message, where it is not installed.
std::vector<ado::Engine> installedEngines();
inline const std::vector<ado::Engine> allEngines = installedEngines();
std::string engineName(const testing::TestParamInfo<ado::Engine> &info);
