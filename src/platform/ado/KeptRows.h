#pragma once

#include "platform/ado/CellTable.h"
#include "platform/ado/Driver.h"
#include "platform/ado/RowSequence.h"

#include <QString>

#include <memory>
#include <optional>

namespace ado {

/// The rows of one list as they were last read, for the next list of the same statement.
struct KeptRows
{
    QString statement;
    std::shared_ptr<const CellTable> cells;
    RowSequence order;                 ///< as loaded
    std::optional<TableMoment> moment; ///< of the reading, where the engine tells what happens after it
    qlonglong notListed = 0;           ///< rows that the table had beside them then
};

} // namespace ado
