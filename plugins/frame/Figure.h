#pragma once

#include "platform/ado/Recordset.h"
#include "platform/runtime/Currency.h"

#include <QDate>
#include <QString>

#include <functional>

namespace statistics {

/// One statement of a report's catalogue and what is done with each of its rows. The statement may be run in slices, so
/// that a long one neither holds the window nor has to be waited for: `take` adds up, it never replaces.
struct Figure
{
    enum class Slices {
        Whole, ///< at once
        Days,  ///< [FROM] and [TO] are days of the report's period
        Keys,  ///< [FROM] and [TO] are whole numbers between those that `bounds` gives
    };

    QString statement;
    Slices slices = Slices::Whole;
    QString bounds = {}; ///< a statement with the columns Lowest and Highest, NULL when there is no row
    std::function<void(const ado::Recordset &row)> take = {};
};

// Values of the current row.
runtime::Currency amountOf(const ado::Recordset &row, const QString &field); ///< exact; NULL is 0
int keyOf(const ado::Recordset &row, const QString &field);                  ///< NULL is 0
QDate dateOf(const ado::Recordset &row, const QString &field);               ///< NULL is an invalid date
QString textOf(const ado::Recordset &row, const QString &field);             ///< NULL is empty

} // namespace statistics
