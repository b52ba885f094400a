#pragma once

#include "platform/controls/GridDelegate.h"
#include "platform/controls/GridHeader.h"
#include "platform/controls/GridLayout.h"
#include "platform/controls/RecordsetGrid.h"
#include "platform/controls/RecordsetModel.h"

#include <vector>

namespace controls {

/// How view and recordset keep together: the user's step moves the recordset, and the recordset's rowChanged(), whoever
/// moved it, moves the view and then raises rowChange(). While the view follows, its own change of row moves nothing.
struct RecordsetGrid::Private
{
    explicit Private(RecordsetGrid *owner);

    void makeHeaders();
    void setRowHeight();
    void bind(ado::Recordset *recordset);
    void rowsReset();
    void rowRemoved(int row);
    void rowChanged();

    /// The stock view's answer to a mouse button or a key. The recordset moves when that is through.
    void byStockView(const std::function<void()> &answer);
    void moveRecordset();
    void chooseCurrent(bool untold);
    void tellRowChange();
    void markRow(int row);
    void follow(bool select);
    int columnToStandIn() const;

    void takeTyped(const QModelIndex &cell, QString typed);
    void toggle(const QModelIndex &cell);
    void assign(int column, const QVariant &value);
    void settle(const ado::Bookmark &row, const QString &field, const QVariant &value);
    int firstTypedColumn() const;

    void noteWidths();
    GridLayout currentLayout() const;
    void applyLayout(const GridLayout &layout);
    /// The designed columns in the font of now.
    void applyDesign();
    int leastWidth(int column) const;
    /// Gives the column that fills the room that the others leave.
    void fillRoom();
    int fillingColumn() const;
    int lastShownColumn() const;
    double pixelsPerUnit() const { return grid->logicalDpiX() / 96.0; }

    ado::Recordset *recordset() const { return model.recordset(); }
    bool hasRow() const { return recordset() && recordset()->hasCurrent(); }

    RecordsetGrid *grid;
    RecordsetModel model;
    GridDelegate delegate;
    GridHeader *header = nullptr;
    BeforeUpdate before;
    StepForesight foresight;
    std::vector<QMetaObject::Connection> bonds; ///< with the recordset
    std::vector<int> widths;                    ///< as designed, loaded or dragged, pixels at 96 dpi
    bool following = false;                     ///< the view is being moved to where the recordset stands
    bool inStockView = false;                   ///< the stock view answers a mouse button or a key
    QPersistentModelIndex clicked;
    QPersistentModelIndex doubleClicked;
    bool movedByUser = false;
    bool marked = true; ///< the current row bears the mark
    QString emptyText;
    bool layoutIsChosen = false; ///< by the user, now or in an earlier session
    int told = 0;                ///< how often rowChange() was raised
    bool freshRows = true;       ///< the next change of row comes with new rows: no row shows as selected
};

} // namespace controls
