#include "platform/controls/GridSpoken.h"

#include <QHeaderView>
#include <QPointer>

#include <algorithm>
#include <utility>
#include <vector>

namespace controls {

namespace {

constexpr int headRow = -1;

/// Columns that are shown, from left to right.
std::vector<int> shownColumns(const RecordsetGrid &grid)
{
    std::vector<int> columns;
    for (int place = 0; place < grid.horizontalHeader()->count(); ++place) {
        const int column = grid.horizontalHeader()->logicalIndex(place);
        if (!grid.isColumnHidden(column))
            columns.push_back(column);
    }
    return columns;
}

int placeOf(const RecordsetGrid &grid, int column)
{
    const std::vector<int> columns = shownColumns(grid);
    const auto found = std::find(columns.begin(), columns.end(), column);
    return found == columns.end() ? -1 : int(found - columns.begin());
}

class SpokenCell : public QAccessibleInterface, public QAccessibleTableCellInterface
{
public:
    SpokenCell(RecordsetGrid *grid, int row, int column)
        : grid_(grid)
        , row_(row)
        , column_(column)
    {
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TableCellInterface && !isHead() ? static_cast<QAccessibleTableCellInterface *>(this)
                                                                    : nullptr;
    }
    bool isValid() const override
    {
        return grid_ && grid_->model() && column_ < grid_->model()->columnCount() && row_ < grid_->model()->rowCount();
    }
    QObject *object() const override { return nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(grid_.data()); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessible::Role role() const override { return isHead() ? QAccessible::ColumnHeader : QAccessible::Cell; }
    void setText(QAccessible::Text, const QString &) override {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind != QAccessible::Name || !isValid())
            return {};
        if (isHead())
            return grid_->model()->headerData(column_, Qt::Horizontal).toString();
        const QString spoken = index().data(Qt::AccessibleTextRole).toString();
        return spoken.isEmpty() ? index().data().toString() : spoken;
    }

    QRect rect() const override
    {
        if (!isValid())
            return {};
        const QHeaderView *heads = grid_->horizontalHeader();
        const QWidget *on = isHead() ? heads->viewport() : grid_->viewport();
        const QRect own =
            isHead() ? QRect(heads->sectionViewportPosition(column_), 0, heads->sectionSize(column_), heads->height())
                     : grid_->visualRect(index());
        return own.translated(on->mapToGlobal(QPoint()));
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        if (!isHead()) {
            const QModelIndex cell = index();
            state.selectable = state.focusable = true;
            state.selected = grid_->selectionModel()->isSelected(cell);
            state.focused = grid_->hasFocus() && grid_->currentIndex() == cell;
            const QVariant check = cell.data(Qt::CheckStateRole);
            state.checkable = cell.flags().testFlag(Qt::ItemIsUserCheckable);
            state.checked = check.isValid() && check.toInt() == Qt::Checked;
            state.editable = cell.flags().testFlag(Qt::ItemIsEditable);
            state.readOnly = !state.editable && !state.checkable;
        }
        state.offscreen = !rect().intersects(QRect(grid_->mapToGlobal(QPoint()), grid_->size()));
        return state;
    }

    int row() const { return row_; }
    int column() const { return column_; } ///< of the model

    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QList<QAccessibleInterface *> columnHeaderCells() const override
    {
        QAccessibleInterface *table = parent();
        return table ? QList<QAccessibleInterface *>{table->child(placeOf(*grid_, column_))}
                     : QList<QAccessibleInterface *>{};
    }
    QList<QAccessibleInterface *> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return placeOf(*grid_, column_); }
    int rowIndex() const override { return row_; }
    bool isSelected() const override { return isValid() && grid_->selectionModel()->isSelected(index()); }
    QAccessibleInterface *table() const override { return parent(); }

private:
    bool isHead() const { return row_ == headRow; }
    QModelIndex index() const { return grid_->model()->index(row_, column_); }

    QPointer<RecordsetGrid> grid_;
    int row_;
    int column_;
};

} // namespace

GridSpoken::GridSpoken(RecordsetGrid *grid)
    : QAccessibleWidget(grid, QAccessible::Table)
{
    const QAbstractItemModel *model = grid->model();
    QObject::connect(model, &QAbstractItemModel::modelReset, &listener_, [this] { forget(); });
    QObject::connect(model, &QAbstractItemModel::rowsRemoved, &listener_, [this] { forget(); });
}

GridSpoken::~GridSpoken()
{
    forget();
}

void GridSpoken::forget()
{
    for (const auto &[place, id] : std::exchange(cells_, {}))
        QAccessible::deleteAccessibleInterface(id);
}

int GridSpoken::numberOf(const RecordsetGrid &grid, const QModelIndex &cell)
{
    const int place = placeOf(grid, cell.column());
    return place < 0 ? -1 : (cell.row() + 1) * int(shownColumns(grid).size()) + place;
}

void *GridSpoken::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface *>(this)
                                               : QAccessibleWidget::interface_cast(type);
}

QAccessibleInterface *GridSpoken::cell(int row, int column) const
{
    const auto [found, missing] = cells_.try_emplace({row, column}, 0);
    if (missing)
        found->second = QAccessible::registerAccessibleInterface(new SpokenCell(grid(), row, column));
    return QAccessible::accessibleInterface(found->second);
}

int GridSpoken::childCount() const
{
    return columnCount() * (rowCount() + 1);
}

QAccessibleInterface *GridSpoken::child(int index) const
{
    const std::vector<int> columns = shownColumns(*grid());
    const auto count = int(columns.size());
    if (index < 0 || count == 0 || index / count > rowCount())
        return nullptr;
    return cell(index / count - 1, columns[std::size_t(index % count)]);
}

QAccessibleInterface *GridSpoken::childAt(int x, int y) const
{
    const QModelIndex cell = grid()->indexAt(grid()->viewport()->mapFromGlobal(QPoint(x, y)));
    return cell.isValid() ? child(numberOf(*grid(), cell)) : nullptr;
}

int GridSpoken::indexOfChild(const QAccessibleInterface *child) const
{
    const auto *cell = dynamic_cast<const SpokenCell *>(child);
    const int place = cell ? placeOf(*grid(), cell->column()) : -1;
    return place < 0 ? -1 : (cell->row() + 1) * columnCount() + place;
}

QAccessibleInterface *GridSpoken::focusChild() const
{
    const QModelIndex current = grid()->currentIndex();
    return current.isValid() ? child(numberOf(*grid(), current)) : nullptr;
}

QAccessibleInterface *GridSpoken::cellAt(int row, int column) const
{
    return row < 0 || column < 0 || column >= columnCount() ? nullptr : child((row + 1) * columnCount() + column);
}

int GridSpoken::selectedCellCount() const
{
    return selectedRowCount() * columnCount();
}

QList<QAccessibleInterface *> GridSpoken::selectedCells() const
{
    QList<QAccessibleInterface *> cells;
    const QList<int> rows = selectedRows();
    for (const int row : rows) {
        for (int column = 0; column < columnCount(); ++column)
            cells << cellAt(row, column);
    }
    return cells;
}

QString GridSpoken::columnDescription(int column) const
{
    const QAccessibleInterface *head = column < columnCount() ? child(column) : nullptr;
    return head ? head->text(QAccessible::Name) : QString();
}

QString GridSpoken::rowDescription(int) const
{
    return {};
}

int GridSpoken::selectedRowCount() const
{
    return int(selectedRows().size());
}

int GridSpoken::columnCount() const
{
    return int(shownColumns(*grid()).size());
}

int GridSpoken::rowCount() const
{
    return grid()->model() ? grid()->model()->rowCount() : 0;
}

QList<int> GridSpoken::selectedRows() const
{
    QList<int> rows;
    const QModelIndexList chosen = grid()->selectionModel()->selectedRows();
    for (const QModelIndex &row : chosen)
        rows << row.row();
    return rows;
}

bool GridSpoken::isRowSelected(int row) const
{
    return selectedRows().contains(row);
}

bool GridSpoken::selectRow(int row)
{
    if (row < 0 || row >= rowCount())
        return false;
    grid()->selectRow(row);
    return true;
}

} // namespace controls
