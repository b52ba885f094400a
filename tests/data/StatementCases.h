#pragma once

#include <QString>

#include <vector>

struct StatementCase
{
    const char *name; ///< fit for a test name
    QString statement;
    /// For a statement that writes: the table whose rows show what it did.
    const char *table = nullptr;
    const char *key = nullptr;
    /// False for the two that no engine runs.
    bool runs = true;
};

/// Every statement of the system but those of clsOperationMoney and clsUserSettingDB, which have tests of their own.
std::vector<StatementCase> statementCases();
