#pragma once

#include "platform/ado/Connection.h"

#include <QStringList>
#include <QVariant>

namespace schema {

/// Raises RuntimeError with a text for the technician.
[[noreturn]] void refuse(const QString &what);

// Also definitions of triggers, which the embedded engine must have a transaction open for already.
// A desk that holds what the statement needs is told in the technician's words.
void run(ado::Connection &connection, const QString &statement);
/// Every row's values; a first row's first value.
QList<QVariantList> rowsOf(ado::Connection &connection, const QString &statement);
QVariant valueOf(ado::Connection &connection, const QString &statement);
/// From here on to the transaction's end no desk writes to them; it waits for desks that do, but not for long.
void holdTables(ado::Connection &connection, const QStringList &tables);

} // namespace schema
