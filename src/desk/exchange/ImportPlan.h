#pragma once

#include "desk/exchange/Subject.h"
#include "platform/ado/Connection.h"

namespace exchange {

/// One line of the file, and what is to come of it.
struct Change
{
    int line = 0;
    qint64 key = 0;      ///< of the row that it changes; 0 for a new one
    QVariantList values; ///< for each of the plan's columns, as they shall stand
    QString told;        ///< for the terminal
};

/// What an import would do, without doing it.
struct ImportPlan
{
    const Subject *subject = nullptr;
    std::vector<const Field *> columns; ///< that are written
    std::vector<Change> added;
    std::vector<Change> changed;
    std::vector<bool> differs; ///< of the columns, whether any row is changed there
    qint64 same = 0;
};

/// Compares a file's records, the header first, with the rows of the database. Raises RuntimeError that tells every line
/// that cannot be taken, and why.
ImportPlan planImport(ado::Connection &connection, const Header &header, const std::vector<Record> &records);

} // namespace exchange
