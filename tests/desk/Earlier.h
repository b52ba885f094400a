#pragma once

#include "tests/support/TestDatabase.h"

#include <QFile>

/// The statements by which an earlier program of ours made its tables, one file an engine.
inline QStringList earlierStatements(const char *made, ado::Engine engine)
{
    const QString suffix =
        engine == ado::Engine::SQLite ? QStringLiteral(".sqlite.sql") : QStringLiteral(".postgresql.sql");
    QFile file(QStringLiteral(EARLIER_SCHEMAS "/") + QString::fromLatin1(made) + suffix);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    return QString::fromUtf8(file.readAll()).split(QStringLiteral(";\n--\n"), Qt::SkipEmptyParts);
}
