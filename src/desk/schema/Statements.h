#pragma once

#include "platform/ado/Connection.h"

#include <QStringList>
#include <QVariant>

namespace schema {

/// Raises RuntimeError with a text for the technician.
[[noreturn]] void refuse(const QString &what);

// Past the desks' own layer, which takes no definitions. A failure is refused, with the server's words behind ours.
void run(ado::Connection &connection, const QString &statement);
/// Every row's values; a first row's first value.
QList<QVariantList> rowsOf(ado::Connection &connection, const QString &statement);
QVariant valueOf(ado::Connection &connection, const QString &statement);

} // namespace schema
