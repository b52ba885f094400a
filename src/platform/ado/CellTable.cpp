#include "platform/ado/CellTable.h"

#include "platform/ado/ColumnValue.h"

#include <algorithm>
#include <utility>

namespace ado {

void TextBlocks::addBlock(std::size_t length)
{
    constexpr std::size_t smallest = 128, largest = 65'536;
    blockSize_ = std::clamp(blockSize_ * 2, smallest, largest);
    room_ = std::max(blockSize_, length);
    blocks_.emplace_back(new char[room_]);
    free_ = blocks_.back().get();
}

CellTable::CellTable(std::vector<ResultColumn> columns)
    : columns_(std::make_shared<const std::vector<ResultColumn>>(std::move(columns)))
{
}

CellTable::CellTable(std::vector<ResultColumn> columns, std::shared_ptr<const HeldRows> rows)
    : CellTable(std::move(columns))
{
    count_ = static_cast<std::size_t>(rows->count()) * columns_->size();
    held_ = std::move(rows);
}

CellTable::Cell CellTable::heldCell(int row, int column) const
{
    return held_->cell(row, column);
}

/// Before one of them is written.
void CellTable::takeHeldCells()
{
    if (!isHeld())
        return;
    count_ = 0;
    for (int row = 0; row < held_->count(); ++row) {
        for (int column = 0; column < columnCount(); ++column)
            add(held_->cell(row, column));
    }
}

ResultColumns CellTable::shareColumns(const ResultColumns &known)
{
    if (known && *known == *columns_)
        columns_ = known;
    return columns_;
}

void CellTable::addBlock()
{
    // The first block grows as it must: most lists are short.
    blocks_.emplace_back();
    if (blocks_.size() > 1)
        blocks_.back().reserve(BlockCells);
}

void CellTable::replace(int row, int column, const CellTable &source, int sourceRow)
{
    takeHeldCells();
    const std::size_t at = place(row, column);
    blocks_[at / BlockCells][at % BlockCells] = source.cell(sourceRow, column);
}

void CellTable::takeRow(int row, const CellTable &source, int sourceRow)
{
    takeHeldCells();
    const bool added = row == rowCount();
    for (int column = 0; column < columnCount(); ++column) {
        Cell taken = source.cell(sourceRow, column);
        if (taken.kind == Kind::Text)
            taken.text = texts_.add(taken.text, taken.length);
        const std::size_t at = place(row, column);
        if (added)
            add(taken);
        else
            blocks_[at / BlockCells][at % BlockCells] = taken;
    }
}

bool CellTable::isSame(const CellTable &other) const
{
    if (rowCount() != other.rowCount() || columns() != other.columns())
        return false;
    if (isHeld() && other.isHeld())
        return held_->isSame(*other.held_);
    for (int row = 0; row < rowCount(); ++row) {
        if (!sameRow(row, other, row))
            return false;
    }
    return true;
}

bool CellTable::sameRow(int row, const CellTable &other, int otherRow) const
{
    for (int column = 0; column < columnCount(); ++column) {
        const Cell one = cell(row, column);
        const Cell two = other.cell(otherRow, column);
        const bool same = one.kind == two.kind && one.length == two.length
                          && (one.kind == Kind::Text ? text(one) == other.text(two) : one.integer == two.integer);
        if (!same)
            return false;
    }
    return true;
}

QVariant CellTable::raw(int row, int column) const
{
    const Cell source = cell(row, column);
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
    const Cell source = cell(row, column);
    const ResultColumn &description = columns()[static_cast<std::size_t>(column)];
    if (source.kind == Kind::Null)
        return {};
    if (description.registered)
        return typedValue(*this, source, description.registered->type);
    if (source.kind == Kind::Text && !description.numeric)
        return QString::fromUtf8(text(source));
    return QVariant::fromValue(moneyOf(*this, source));
}

} // namespace ado
