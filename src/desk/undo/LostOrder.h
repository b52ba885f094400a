#pragma once

#include "desk/schema/Tables.h"
#include "platform/ado/Connection.h"

#include <QJsonObject>
#include <QList>

namespace undo {

/// A row as the journal tells it: the clinic's columns, numbers or texts.
struct LostRow
{
    const schema::TablePlan *table;
    QJsonObject row;

    qint64 key() const;
};

/// An order that was deleted, then its lines and its money.
struct LostOrder
{
    QList<LostRow> rows;

    const QJsonObject &order() const { return rows.front().row; }
};

/// As it stands in a backup. Raises RuntimeError when it is not in there, or the file is no backup.
LostOrder orderInBackup(const QString &file, int order);

/// As it was when it was last deleted, with what went with it at once. Raises RuntimeError when the journal knows of no
/// deletion.
LostOrder orderInJournal(ado::Connection &connection, int order);

} // namespace undo
