#include "platform/controls/RowSearch.h"

#include "platform/ado/CellTable.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"

#include <unordered_map>
#include <utility>

namespace controls {

namespace {

// Of most cells without a value in between: a list has a hundred thousand of them.

qlonglong numberIn(const ado::CellTable &table, int row, int column)
{
    const ado::CellTable::Cell &cell = table.cell(row, column);
    return cell.kind == ado::CellTable::Kind::Integer ? cell.integer : table.raw(row, column).toLongLong();
}

QString textIn(const ado::CellTable &table, int row, int column)
{
    const ado::CellTable::Cell &cell = table.cell(row, column);
    return cell.kind == ado::CellTable::Kind::Text ? QString::fromUtf8(table.text(cell))
                                                   : table.raw(row, column).toString();
}

} // namespace

RowSearch::RowSearch(QStringList fields, Reading reading)
    : fields_(std::move(fields))
    , reading_(std::move(reading))
{
}

void RowSearch::forget()
{
    texts_.clear();
    ready_ = false;
}

void RowSearch::prepare(const ado::Recordset &rows)
{
    if (ready_)
        return;
    texts_.clear();
    if (reading_)
        takeReading(rows);
    else
        takeFields(rows);
    ready_ = true;
}

void RowSearch::takeFields(const ado::Recordset &rows)
{
    std::vector<int> columns;
    for (const QString &field : fields_)
        columns.push_back(rows.columnIndex(field));
    for (int row = 0; row < rows.rowCount(); ++row) {
        for (const int column : columns) {
            runtime::Attempt attempt(
                runtime::Attempt::Failure::IsAnswer); // one cell must not keep the others from being found
            attempt([&] { texts_.add(runtime::text(rows.valueAt(row, column))); });
        }
        texts_.endRow();
    }
}

/// Rows that came to the table since the list was opened are no part of it; those that went have no texts.
void RowSearch::takeReading(const ado::Recordset &rows)
{
    const ado::CellTable table = reading_();
    std::unordered_map<qlonglong, int> placeOfKey;
    placeOfKey.reserve(std::size_t(table.rowCount()));
    for (int place = 0; place < table.rowCount(); ++place)
        placeOfKey.emplace(numberIn(table, place, 0), place);
    for (int row = 0; row < rows.rowCount(); ++row) {
        const auto place = placeOfKey.find(rows.bookmarkAt(row).toLongLong());
        for (int column = 1; place != placeOfKey.end() && column < table.columnCount(); ++column)
            texts_.add(textIn(table, place->second, column));
        texts_.endRow();
    }
}

} // namespace controls
