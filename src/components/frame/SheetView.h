#pragma once

#include "components/frame/SheetModel.h"

#include <QTableView>
#include <QWidget>

namespace statistics {

/// The table of a sheet, sorted by a click on a caption, over its totals, which stay in view.
class SheetView : public QWidget
{
    Q_OBJECT
public:
    explicit SheetView(QWidget *parent = nullptr);

    void setSheet(const Sheet &sheet);
    /// As they stand now, in the order that the user chose.
    const std::vector<Row> &rows() const { return rows_->rows(); }

private:
    void fitColumns(const std::vector<Column> &columns);

    SheetModel *rows_;
    SheetModel *totals_;
    QTableView *tblReport_;
    QTableView *tblTotals_;
};

} // namespace statistics
