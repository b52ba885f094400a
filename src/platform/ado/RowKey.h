#pragma once

#include "platform/ado/Command.h"
#include "platform/ado/SqlText.h"
#include "platform/ado/TableRegistry.h"

namespace ado {

class CellTable;

/// The one column by which the rows of a table are told apart; none where the name is empty.
struct RowKey
{
    QString name;
    QString text; ///< as a statement writes it
};

/// Asks the engine's catalogue for columns that could be it, the primary key first.
Command candidatesForKey(Command command, const Table &table, Dialect dialect);
/// The first of the answer whose values this layer can keep: whole numbers, or a column that it knows.
RowKey keyAmong(const CellTable &candidates, const Table &table);

} // namespace ado
