#pragma once

#include "components/frame/Sheet.h"
#include "platform/print/Page.h"

#include <vector>

namespace statistics {

/// Room for a table on paper, mm: the heights are what captions, rows and totals may take of a page.
struct SheetRoom
{
    double width = 0;
    double firstPage = 0;
    double laterPages = 0;
};

/// Where the rows of a table come on paper: columns as wide as their numbers, long texts in further lines, and totals that
/// never stand alone on a page.
class SheetRows
{
public:
    SheetRows(const Sheet &sheet, const SheetRoom &room);

    double points() const;
    /// Of the captions, the totals and a row of one line, mm.
    double lineHeight() const { return lineHeight_; }
    double heightOf(std::size_t row) const { return lineHeight_ * lines_[row]; }
    double columnWidth(std::size_t column) const { return columns_[column]; }

    std::size_t pageCount() const { return starts_.size(); }
    std::size_t firstRow(std::size_t page) const { return starts_[page]; }
    std::size_t endRow(std::size_t page) const { return page + 1 < starts_.size() ? starts_[page + 1] : lines_.size(); }
    /// Of what stands on the last page, mm.
    double lastHeight() const;

private:
    void layOut(const SheetRoom &room, double lineHeight);
    void fitColumns(double width);
    void countLines();
    void breakPages(const SheetRoom &room);

    const Sheet &sheet_;
    std::vector<double> needed_; ///< by each column, for its texts at their full size, mm
    double lineHeight_ = 0;
    std::vector<double> columns_;
    std::vector<int> lines_; ///< of each row
    std::vector<std::size_t> starts_;
};

/// The lines of a cell's text: one that is a little too wide for its cell is drawn smaller, a longer one broken. Numbers are
/// never broken.
QStringList linesInCell(const print::TextItem &item, bool isText);
/// Letters of reports.
print::TextFont sheetFont(double points, bool bold = false);

} // namespace statistics
