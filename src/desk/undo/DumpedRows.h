#pragma once

#include "desk/schema/Tables.h"

#include <QJsonObject>
#include <QList>

namespace undo {

/// Rows of a server's backup without a server: those of the table whose column holds the number. Raises RuntimeError where
/// the file cannot be read.
QList<QJsonObject> rowsInDump(const QString &file, const schema::TablePlan &table, const QString &column,
                              qint64 number);

/// The same in the script that the server's tool makes of it.
QList<QJsonObject> rowsInScript(QByteArrayView script, const schema::TablePlan &table, const QString &column,
                                qint64 number);

} // namespace undo
