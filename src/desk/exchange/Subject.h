#pragma once

#include "desk/exchange/Csv.h"

#include <QStringList>
#include <QVariant>

#include <span>
#include <vector>

namespace exchange {

/// How a cell is read, and written.
enum class Reads { Text, Memo, Money, Date, Flag };

/// A column of a list, and what may stand at its head.
struct Field
{
    const char *column;
    const char *caption;             ///< that is written, and that messages name
    std::vector<const char *> names; ///< others that are read; the column's own is
    Reads reads;
    const char *yes = ""; ///< of a flag: written and read, beside 1, 0, 예, 아니오
    const char *no = "";
    const char *whenNew = ""; ///< what a new row gets where nothing is said; "오늘" is a date
};

/// A list that can be read from a file.
struct Subject
{
    const char *what; ///< for messages
    const char *table;
    const char *key;
    const char *name;                 ///< column by which a row is known again
    const char *group;                ///< column that tells rows of one name apart; empty for none
    std::vector<const char *> needed; ///< columns that a new row must be given
    std::vector<Field> fields;

    const Field *field(const char *column) const;
};

const Subject &products();
const Subject &patients();

/// What the header is of: the list, and its field for each cell.
struct Header
{
    const Subject *subject = nullptr;
    std::vector<const Field *> fields; ///< null for a cell without text

    bool has(const char *column) const;
    /// Place of the column's cell, -1 for none.
    int placeOf(const char *column) const;
};

/// Captions and columns' names, in any order, blanks and capitals passed over. Raises RuntimeError that names what is
/// unknown, there twice, or missing.
Header readHeader(const Record &record);

/// A cell's value: a text, Currency, a date's text or a flag's number; invalid for an empty one. Raises RuntimeError with
/// the reason.
QVariant valueOf(const Field &field, const QString &cell);
/// What valueOf reads as that value.
QString cellOf(const Field &field, const QVariant &value);

} // namespace exchange
