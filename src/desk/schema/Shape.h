#pragma once

#include "desk/schema/Tables.h"

#include <QList>

namespace schema {

/// A column as a database, or a backup of one, tells it.
struct FoundColumn
{
    QString name;
    QString type;
    bool required = false;
    bool filled = false; ///< a row that leaves it out gets a value all the same
};

/// Why a table of that name with those columns is not the one that this system writes; empty when it is. Columns of other
/// programs are passed over, unless a row of ours could not be written because of them. Types that work with less do here, too:
/// what is sold in them comes back as it was.
QString whyForeign(const TablePlan &table, const QList<FoundColumn> &columns, Dialect dialect);

} // namespace schema
