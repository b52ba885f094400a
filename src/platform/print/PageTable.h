#pragma once

#include "platform/print/Page.h"

#include <vector>

namespace print {

/// A table of one document, filled cell by cell. Rows and columns count from 1; one that does not exist, a width of nothing
/// and a span of no column raise InvalidCall. A column has no width, and no room for a text, until it is given one.
/// A cell's text is never split into further cells, whatever it holds. No borders are drawn.
class PageTable
{
public:
    struct Cell
    {
        QString text;
        int span = 1;
        Align align = Align::Left;
        double points = 0; ///< 0: the document's font size
        bool bold = false;
    };
    struct Row
    {
        double height; ///< mm
        std::vector<Cell> cells;
    };

    PageTable(int rows, int columns, double rowHeight);

    int rowCount() const { return int(rows_.size()); }
    int columnCount() const { return int(columnWidths_.size()); }

    /// Adds a row of the default height at the end; returns its number.
    int appendRow();
    void setColumnWidth(int column, double mm);
    void setRowHeight(int row, double mm);
    void setSpan(int row, int column, int columns);
    void setText(int row, int column, const QString &text);
    void setAlign(int row, int column, Align align);
    void setAlign(int row, int firstColumn, int lastColumn, Align align);
    void setBold(int row, int column, bool bold);
    void setPoints(int row, int column, double points);

    const std::vector<Row> &rows() const { return rows_; }
    double columnWidth(int column) const;

private:
    Row &rowAt(int row);
    Cell &cellAt(int row, int column);

    std::vector<Row> rows_;
    std::vector<double> columnWidths_;
    double rowHeight_;
};

} // namespace print
