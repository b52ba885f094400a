#pragma once

#include "platform/ado/Connection.h"

#include <QHash>
#include <QString>

namespace copy {

/// The last key that each table gave, by table; a deleted row's, too. Tables whose keys are not counted have none.
QHash<QString, qint64> counters(ado::Connection &connection);

/// No key that was given there is given here again. Within the caller's transaction.
void countOn(ado::Connection &connection, const QHash<QString, qint64> &given);

} // namespace copy
