#pragma once

#include "platform/ado/Recordset.h"
#include "platform/controls/RecordsetGrid.h"

#include <QAbstractTableModel>
#include <QPointer>

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace controls {

/// The rows of a recordset as a grid shows them. Reads cells only when asked for them and never moves the recordset. The
/// grid tells it when rows changed.
class RecordsetModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    /// Whether the row is one of the found ones.
    static constexpr int FoundRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void setColumns(std::vector<GridColumn> columns);
    const std::vector<GridColumn> &columns() const { return columns_; }
    const GridColumn &column(int index) const { return columns_[std::size_t(index)]; }

    void setRecordset(ado::Recordset *recordset);
    ado::Recordset *recordset() const { return recordset_; }
    void setUnboundFetch(RecordsetGrid::UnboundFetch fetch);

    /// Forgets rows and fetched cells and counts the recordset's rows anew.
    void reread();
    void rowRemoved(int row);
    void rowRead(int row);
    /// Fetches an unbound cell that is not known.
    void fetch(int row, int column) const;
    /// Whether a cell was asked for, since this was, that could not be read because a server was awaited.
    bool wasLeftOut() const { return std::exchange(leftOut_, false); }
    /// The row that bears the mark of the current one, -1 for none; returns the row before. Whoever shows the heads paints both.
    int setMarkedRow(int row);
    /// Ascending; they lose their marks when rows come anew or go.
    void setFoundRows(std::vector<int> rows);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    void startAnew();
    QVariant storedValue(int row, int column) const;
    QString unboundText(int row, int column) const;
    QString shownText(int row, int column) const;
    bool isChecked(int row, int column) const;
    bool isFound(int row) const;

    std::vector<GridColumn> columns_;
    std::vector<int> fieldIndexes_; ///< of each column in the recordset; -1 when absent
    QPointer<ado::Recordset> recordset_;
    RecordsetGrid::UnboundFetch fetch_;
    mutable std::map<std::pair<int, int>, QString> fetched_;
    mutable std::set<int> toLogNoMore_; ///< unreadable rows: they are painted again and again
    mutable bool leftOut_ = false;
    int rows_ = 0;
    int markedRow_ = -1;
    std::vector<int> found_;
};

} // namespace controls
