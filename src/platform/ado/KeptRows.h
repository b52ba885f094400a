#pragma once

#include "platform/ado/CellTable.h"
#include "platform/ado/Driver.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

namespace ado {

/// The rows of one list as they were read at a moment, for the next list of the same statement.
struct KeptRows
{
    QString statement;
    std::shared_ptr<const CellTable> cells;
    std::vector<std::uint32_t> order;
    TableMoment moment;
    qlonglong notListed = 0; ///< rows that the table had beside them
};

} // namespace ado
