#pragma once

#include "components/frame/Sheet.h"

#include <QAbstractTableModel>

namespace statistics {

/// Rows of a sheet for a table; sorts them by a column, equal ones staying in their order. What is selected stays so.
class SheetModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    /// `numbered` rows bear their running number.
    explicit SheetModel(bool numbered, QObject *parent = nullptr)
        : QAbstractTableModel(parent)
        , numbered_(numbered)
    {
    }

    void setRows(const std::vector<Column> &columns, std::vector<Row> rows);
    const std::vector<Row> &rows() const { return rows_; }
    /// Where the row stood before anything was sorted.
    int placeOf(int row) const { return int(places_[std::size_t(row)]); }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    void followRows(const std::vector<int> &after);

    bool numbered_;
    std::vector<Column> columns_;
    std::vector<Row> rows_;
    std::vector<std::size_t> places_;
};

} // namespace statistics
