#include "components/frame/SheetModel.h"

#include "platform/controls/Palette.h"

#include <algorithm>
#include <numeric>

namespace statistics {

namespace {

QVariant colorOf(const Cell &cell)
{
    const controls::Ink ink = inkOf(cell);
    return ink == controls::Ink::Plain ? QVariant() : controls::ink(ink);
}

} // namespace

void SheetModel::setRows(const std::vector<Column> &columns, std::vector<Row> rows)
{
    beginResetModel();
    columns_ = columns;
    rows_ = std::move(rows);
    places_.resize(rows_.size());
    std::iota(places_.begin(), places_.end(), std::size_t{0});
    endResetModel();
}

int SheetModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(rows_.size());
}

int SheetModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(columns_.size());
}

QVariant SheetModel::data(const QModelIndex &index, int role) const
{
    const Cell &cell = rows_[std::size_t(index.row())][std::size_t(index.column())];
    switch (role) {
    case Qt::DisplayRole:
        return shownText(cell);
    case Qt::TextAlignmentRole: {
        const bool toTheRight = columns_[std::size_t(index.column())].kind != Column::Kind::Text;
        return int((toTheRight ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    case Qt::ToolTipRole: // of a long text the column shows the beginning only
        return std::holds_alternative<QString>(cell) ? QVariant(shownText(cell)) : QVariant();
    case Qt::AccessibleTextRole: {
        const bool won = columns_[std::size_t(index.column())].kind == Column::Kind::Money
                         && std::holds_alternative<runtime::Currency>(cell);
        return won ? QVariant(shownText(cell) + u'원') : QVariant();
    }
    case Qt::ForegroundRole:
        return colorOf(cell);
    default:
        return {};
    }
}

QVariant SheetModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical)
        return role != Qt::DisplayRole ? QVariant() : numbered_ ? QVariant(section + 1) : QVariant(QString());
    const Column &column = columns_[std::size_t(section)];
    if (role == Qt::DisplayRole)
        return column.caption;
    if (role == Qt::TextAlignmentRole)
        return int((column.kind != Column::Kind::Text ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

void SheetModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0 || column >= columnCount())
        return;
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const auto place = std::size_t(column);
    std::vector<std::size_t> before(rows_.size()); // where the row of each place stood
    std::iota(before.begin(), before.end(), std::size_t{0});
    std::stable_sort(before.begin(), before.end(), [&](std::size_t a, std::size_t b) {
        const Cell &first = rows_[a][place];
        const Cell &second = rows_[b][place];
        return order == Qt::AscendingOrder ? isBefore(first, second) : isBefore(second, first);
    });
    std::vector<Row> sorted;
    std::vector<std::size_t> places;
    std::vector<int> after(rows_.size());
    for (std::size_t row = 0; row < before.size(); ++row) {
        sorted.push_back(std::move(rows_[before[row]]));
        places.push_back(places_[before[row]]);
        after[before[row]] = int(row);
    }
    rows_ = std::move(sorted);
    places_ = std::move(places);
    followRows(after);
    emit layoutChanged({}, VerticalSortHint);
}

/// Whoever holds on to a row, the selection above all, finds it where it stands now.
void SheetModel::followRows(const std::vector<int> &after)
{
    const QModelIndexList held = persistentIndexList();
    QModelIndexList moved;
    for (const QModelIndex &old : held)
        moved << index(after[std::size_t(old.row())], old.column());
    changePersistentIndexList(held, moved);
}

} // namespace statistics
