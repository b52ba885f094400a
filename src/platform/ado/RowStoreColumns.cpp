// Where in the rows of a list what stands.
#include "platform/ado/RowStore.h"

#include <algorithm>

namespace ado {

int RowStore::columnIndex(const QString &field) const
{
    const auto found = std::ranges::find_if(
        columns_, [&](const ResultColumn &column) { return column.name.compare(field, Qt::CaseInsensitive) == 0; });
    return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

/// The statement's own, and where the key stands among or behind them.
void RowStore::knowColumns()
{
    const int firstAdded = cells_->columnCount() - static_cast<int>(shape_.added().size());
    columns_.assign(cells_->columns().begin(), cells_->columns().begin() + firstAdded);
    if (shape_.base() && !shape_.key().isEmpty())
        keyColumn_ = shape_.keyIsAdded() ? firstAdded : columnIndex(shape_.key());
    else if (shape_.base()
             && shape_.baseColumn(shape_.base()->key)) // one that not every clinic has, where this list does
        keyColumn_ = columnIndex(shape_.base()->key);
}

/// Where the order items stand in rows that were read whole; none when one of them is missing, and the server's order stays.
std::vector<OrderColumn> RowStore::orderColumns(const CellTable &table) const
{
    std::vector<OrderColumn> columns;
    int added = static_cast<int>(columns_.size()) + (shape_.keyIsAdded() ? 1 : 0);
    for (const OrderItem &item : shape_.order()) {
        int column = item.field.isEmpty() ? -1 : columnIndex(item.field);
        if (column < 0 && added < table.columnCount())
            column = added++;
        if (column < 0)
            return {};
        columns.push_back({column, item.descending});
    }
    return columns;
}

} // namespace ado
