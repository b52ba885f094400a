#include "plugins/frame/SheetModel.h"

#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace statistics {

namespace {

const QColor negativeColor(0xB3, 0x26, 0x1E);

QVariant colorOf(const Cell &cell)
{
    const auto *number = std::get_if<runtime::Currency>(&cell);
    if (!number || *number > runtime::Currency())
        return {};
    // The minus sign tells it too; zeros step back so that the eye finds what is there.
    return number->isZero() ? QGuiApplication::palette().color(QPalette::PlaceholderText) : negativeColor;
}

} // namespace

void SheetModel::setRows(const std::vector<Column> &columns, std::vector<Row> rows)
{
    beginResetModel();
    columns_ = columns;
    rows_ = std::move(rows);
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
        const bool toTheRight = columns_[std::size_t(index.column())].kind == Column::Kind::Number;
        return int((toTheRight ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
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
        return int((column.kind == Column::Kind::Number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

void SheetModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0 || column >= columnCount())
        return;
    emit layoutAboutToBeChanged();
    const auto place = std::size_t(column);
    std::stable_sort(rows_.begin(), rows_.end(), [place, order](const Row &a, const Row &b) {
        return order == Qt::AscendingOrder ? isBefore(a[place], b[place]) : isBefore(b[place], a[place]);
    });
    emit layoutChanged();
}

} // namespace statistics
