#pragma once

#include "desk/schema/Tables.h"
#include "tests/support/TestDatabase.h"

/// Every row of every table, by key.
inline QStringList contentOf(TestDatabase &clinic)
{
    QStringList lines;
    for (const schema::TablePlan &table : schema::tablePlans()) {
        lines << QString::fromLatin1(table.name);
        lines << clinic.rows(
            QStringLiteral("SELECT * FROM %1 ORDER BY %2")
                .arg(QString::fromLatin1(table.name), QString::fromLatin1(table.columns.front().name)));
    }
    return lines;
}
