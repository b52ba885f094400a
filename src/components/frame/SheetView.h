#pragma once

#include "components/frame/SheetModel.h"

#include <QTableView>
#include <QWidget>

namespace statistics {

/// The table of a sheet, sorted by a click on a caption, over its totals, which stay in view. Its columns fit the window
/// until the user drags one; where that is too narrow, numbers are drawn smaller, not cut.
class SheetView : public QWidget
{
    Q_OBJECT
public:
    explicit SheetView(QWidget *parent = nullptr);

    void setSheet(const Sheet &sheet);
    /// As they stand now, in the order that the user chose.
    const std::vector<Row> &rows() const { return rows_->rows(); }
    /// Makes that row of the sheet current, wherever it stands.
    void choose(int row);
    /// Figures can be opened: by a double click, or Enter.
    void letOpen();

signals:
    /// A row of the sheet, -1 for the totals.
    void opened(int row, int column);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    struct Width
    {
        int least; ///< with the numbers drawn smaller
        int full;
    };
    Width widthOf(const Column &plan, int column) const;
    void fitColumns();

    std::vector<Width> widths_; ///< that the columns need
    bool fitting_ = false;
    bool dragged_ = false; ///< the widths are the user's
    SheetModel *rows_;
    SheetModel *totals_;
    QTableView *tblReport_;
    QTableView *tblTotals_;
};

} // namespace statistics
