#pragma once

#include "platform/ado/Recordset.h"
#include "tests/support/TestDatabase.h"

#include <QStringList>

/// A small clinic with every oddity that a statement may meet: NULLs, returns, service and loss lines, a line whose
/// product is gone, negative money, every method and operator, known or not.
namespace clinic {

/// The engine's database of this program, with the same rows under the same keys on every engine. To read only.
TestDatabase &filled(ado::Engine engine);
/// The same to write on; it is filled anew for the next that asks.
TestDatabase &filledToWrite(ado::Engine engine);

/// The names of the columns, then the rows that follow, a line each, values with their types.
QStringList render(ado::Recordset &rows);
/// Opens the statement and renders it; "refused" when the engine does not run it.
QStringList rowsOf(const QString &statement, const ado::ConnectionPtr &connection,
                   ado::CursorType cursor = ado::CursorType::Static);

} // namespace clinic
