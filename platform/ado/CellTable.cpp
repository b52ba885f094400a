#include "platform/ado/CellTable.h"

#include "platform/ado/ColumnValue.h"

namespace ado {

CellTable::CellTable(std::vector<ResultColumn> columns)
    : columns_(std::move(columns))
{
}

void CellTable::reserveRows(int rows)
{
    cells_.reserve(static_cast<std::size_t>(rows) * columns_.size());
}

void CellTable::addNull()
{
    cells_.push_back({{.integer = 0}, 0, Kind::Null});
}

void CellTable::addInteger(std::int64_t value)
{
    cells_.push_back({{.integer = value}, 0, Kind::Integer});
}

void CellTable::addReal(double value)
{
    cells_.push_back({{.real = value}, 0, Kind::Real});
}

void CellTable::addText(const char *utf8, std::size_t length)
{
    cells_.push_back({{.offset = texts_.size()}, static_cast<std::uint32_t>(length), Kind::Text});
    texts_.append(utf8, length);
}

void CellTable::replace(int row, int column, const CellTable &source, int sourceRow)
{
    Cell cell = source.cell(sourceRow, column);
    if (cell.kind == Kind::Text) {
        const QByteArrayView text = source.text(cell);
        cell.offset = texts_.size();
        texts_.append(text.data(), cell.length);
    }
    cells_[static_cast<std::size_t>(row) * columns_.size() + static_cast<std::size_t>(column)] = cell;
}

QVariant CellTable::raw(int row, int column) const
{
    const Cell &source = cell(row, column);
    switch (source.kind) {
    case Kind::Null:
        return {};
    case Kind::Integer:
        return QVariant::fromValue<qlonglong>(source.integer);
    case Kind::Real:
        return source.real;
    case Kind::Text:
        return QString::fromUtf8(text(source));
    }
    Q_UNREACHABLE();
}

QVariant CellTable::value(int row, int column) const
{
    const Cell &source = cell(row, column);
    const ResultColumn &description = columns_[static_cast<std::size_t>(column)];
    if (source.kind == Kind::Null)
        return {};
    if (description.registered)
        return typedValue(*this, source, description.registered->type);
    if (source.kind == Kind::Text && !description.numeric)
        return QString::fromUtf8(text(source));
    return QVariant::fromValue(moneyOf(*this, source));
}

} // namespace ado
