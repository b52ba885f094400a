#pragma once

#include "desk/schema/Tables.h"
#include "platform/ado/Connection.h"

#include <QVariant>

namespace rows {

/// A value as a database has it (see ado::CellTable::raw) as its column means it: qlonglong, Currency, double or a text,
/// dates as "2026-11-25"; invalid for none. Raises RuntimeError, with a text that says why, for one that the column would
/// not give back as it came: nothing is rounded or cut.
QVariant exactValue(const QVariant &raw, schema::Holds holds);

/// Raises the same for one that this engine's column of that kind does not take.
void demandFit(const QVariant &exact, ado::Engine engine);

/// The same text for the same value only, whatever the engine; empty for none.
QByteArray plainText(const QVariant &exact);

} // namespace rows
