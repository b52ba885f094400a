#pragma once

#include "platform/controls/RecordsetGrid.h"

#include <QAccessibleWidget>

#include <map>

namespace controls {

/// A grid for a screen reader: its heads and cells as they are shown. Columns that are not shown, the keys of the rows above
/// all, are not in it.
class GridSpoken : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    explicit GridSpoken(RecordsetGrid *grid);
    ~GridSpoken() override;

    /// Number of the cell among the children; -1 of one that is not shown.
    static int numberOf(const RecordsetGrid &grid, const QModelIndex &cell);

    RecordsetGrid *grid() const { return static_cast<RecordsetGrid *>(object()); }

    void *interface_cast(QAccessible::InterfaceType type) override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *focusChild() const override;

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QAccessibleInterface *cellAt(int row, int column) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface *> selectedCells() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int row) const override;
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override;
    int columnCount() const override;
    int rowCount() const override;
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override;
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override;
    bool selectRow(int row) override;
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent *) override {}

private:
    QAccessibleInterface *cell(int row, int column) const;
    void forget();

    mutable std::map<std::pair<int, int>, QAccessible::Id>
        cells_; ///< by row, -1 for the heads, and column of the model
    QObject listener_;
};

} // namespace controls
