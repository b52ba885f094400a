#pragma once

#include "components/frame/Period.h"
#include "components/frame/Sum.h"
#include "platform/ado/CellTable.h"

#include <QDate>
#include <QString>
#include <QUtf8StringView>

#include <functional>
#include <utility>

namespace statistics {

/// One row of a statement's result, its columns counted from 0 in the order of the statement. Looked at where it lies:
/// a year of a large shop gives some hundred thousand of them. What cannot be read raises RuntimeError, but for an amount.
class Record
{
public:
    Record(const ado::CellTable &rows, int row)
        : rows_(rows)
        , row_(row)
    {
    }

    Sum amount(int column) const; ///< exact; NULL is 0, unknown where the cell holds no amount
    /// NULL is 0.
    int key(int column) const
    {
        const Cell &cell = rows_.cell(row_, column);
        return isPlainNumber(cell, column) ? int(cell.integer) : otherKey(column);
    }
    QDate date(int column) const;   ///< NULL is an invalid date
    QString text(int column) const; ///< NULL is empty
    /// The same in UTF-8, for texts that are looked at more often than shown. Lies in the row, or in what is lent for it.
    QUtf8StringView utf8(int column, QByteArray &room) const;
    /// NULL is false.
    bool flag(int column) const
    {
        const Cell &cell = rows_.cell(row_, column);
        return isPlainNumber(cell, column) ? cell.integer != 0 : otherFlag(column);
    }
    bool isNull(int column) const;

private:
    using Cell = ado::CellTable::Cell;
    using Kind = ado::CellTable::Kind;

    /// A whole number as nearly all are, which is read without a value object between.
    bool isPlainNumber(const Cell &cell, int column) const
    {
        if (cell.kind != Kind::Integer || !std::in_range<qint32>(cell.integer))
            return false;
        const ado::Column *const known = rows_.columns()[std::size_t(column)].registered;
        return !known || known->type == ado::ColumnType::Key || known->type == ado::ColumnType::Long
               || known->type == ado::ColumnType::Integer;
    }
    bool isPlain(const Cell &cell, int column) const;
    bool isPlainText(const Cell &cell, int column) const;
    int otherKey(int column) const;
    bool otherFlag(int column) const;

    const ado::CellTable &rows_;
    int row_;
};

/// One statement of a report's catalogue and what is done with each of its rows. The statement may be run in slices, so
/// that a long one neither holds the window nor has to be waited for: `take` adds up, it never replaces.
struct Figure
{
    enum class Slices {
        Whole, ///< at once
        Days,  ///< [FROM] and [TO] are days of the report's period
        Keys, ///< [FROM] and [TO] are whole numbers between those that `bounds` gives; [FIRST] and [LAST] the period's days
    };

    QString statement;
    Slices slices = Slices::Whole;
    QString bounds = {}; ///< a statement that gives the lowest and the highest first, NULL when there is no row
    std::function<void(const Record &row)> take = {};
    Period days = {};    ///< where they are not the report's
    int firstKeys = 500; ///< in the first slice
    /// The statement's rows before they are summed, in the same columns. Where an engine is in the program itself, nothing has
    /// to travel and they are added up here sooner than there. Empty: the statement stands for both.
    QString unsummed = {};
    /// The rows are kept, and taken again as long as nothing in the database has changed: for what is long in counting. The
    /// statement must not ask for anything but the database's rows, the time above all.
    bool isKept = false;
};

/// A statement's two forms, see Figure::unsummed.
enum class Summed { Yes, No };

/// The bounds of a table's keys, or of another column that has an index.
QString keyBounds(const char *key, const char *table);
/// The bounds of the keys of the period's orders. A period's orders lie close together but for few, and so do their lines:
/// the lines of a range of orders are found several times faster than those of each order of a day.
QString orderBounds();
/// "tPSOrderMaster INNER JOIN tPSOrderDetail ... WHERE ...": the lines of the period's orders [FROM] to [TO]. `joined` goes
/// between.
QString linesOfOrders(const QString &joined = {});

} // namespace statistics
