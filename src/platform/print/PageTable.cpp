#include "platform/print/PageTable.h"

#include "platform/runtime/RuntimeError.h"

namespace print {

namespace {

std::size_t checkedIndex(int number, std::size_t count, const QString &what)
{
    if (number < 1 || std::size_t(number) > count)
        throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall,
                                    QStringLiteral("표에 없는 %1입니다: %2").arg(what).arg(number));
    return std::size_t(number) - 1;
}

/// No text can be fitted into nothing, however small it is made.
void refuseNothing(bool something, const QString &what, double value)
{
    if (!something)
        throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall,
                                    QStringLiteral("%1은 0보다 커야 합니다: %2").arg(what).arg(value));
}

} // namespace

PageTable::PageTable(int rows, int columns, double rowHeight)
    : rows_(std::size_t(rows), Row{rowHeight, std::vector<Cell>(std::size_t(columns))})
    , columnWidths_(std::size_t(columns), 0)
    , rowHeight_(rowHeight)
{
}

int PageTable::appendRow()
{
    rows_.push_back({rowHeight_, std::vector<Cell>(columnWidths_.size())});
    return rowCount();
}

void PageTable::setColumnWidth(int column, double mm)
{
    refuseNothing(mm > 0, QStringLiteral("열의 폭"), mm);
    columnWidths_[checkedIndex(column, columnWidths_.size(), QStringLiteral("열"))] = mm;
}

double PageTable::columnWidth(int column) const
{
    return columnWidths_[checkedIndex(column, columnWidths_.size(), QStringLiteral("열"))];
}

void PageTable::setRowHeight(int row, double mm)
{
    rowAt(row).height = mm;
}

void PageTable::setSpan(int row, int column, int columns)
{
    refuseNothing(columns >= 1, QStringLiteral("합친 칸 수"), columns);
    checkedIndex(column + columns - 1, columnWidths_.size(), QStringLiteral("열"));
    cellAt(row, column).span = columns;
}

void PageTable::setText(int row, int column, const QString &text)
{
    cellAt(row, column).text = text;
}

void PageTable::setAlign(int row, int column, Align align)
{
    cellAt(row, column).align = align;
}

void PageTable::setAlign(int row, int firstColumn, int lastColumn, Align align)
{
    for (int column = firstColumn; column <= lastColumn; ++column)
        setAlign(row, column, align);
}

void PageTable::setBold(int row, int column, bool bold)
{
    cellAt(row, column).bold = bold;
}

void PageTable::setPoints(int row, int column, double points)
{
    cellAt(row, column).points = points;
}

PageTable::Row &PageTable::rowAt(int row)
{
    return rows_[checkedIndex(row, rows_.size(), QStringLiteral("행"))];
}

PageTable::Cell &PageTable::cellAt(int row, int column)
{
    return rowAt(row).cells[checkedIndex(column, columnWidths_.size(), QStringLiteral("열"))];
}

} // namespace print
