#include "components/frame/SheetRows.h"

#include "platform/controls/Appearance.h"

#include <algorithm>
#include <numeric>

namespace statistics {

namespace {

constexpr double fullHeight = 5; // of a line, mm
constexpr double leastHeight = 3.2;
constexpr double heightStep = 0.1;
constexpr double fullPoints = 8;
constexpr double pointsPerMm = 2.15; ///< in a line of that height

constexpr std::size_t mostDenseRows = 60; ///< on a page
constexpr std::size_t companions = 3;     ///< rows that stand with the totals
constexpr double leastTextPart = 0.12;    ///< of the width, for a column of texts where numbers need the room
constexpr double leastForOneLine = 0.8;
constexpr double gap = 1.2; // between two cells, mm
constexpr double tolerance = 1e-6;

double widthOf(const QString &text, bool bold)
{
    constexpr double endless = 10'000;
    return print::widthOnOneLine(
        {.text = text, .box = {0, 0, endless, fullHeight}, .font = sheetFont(fullPoints, bold)});
}

} // namespace

print::TextFont sheetFont(double points, bool bold)
{
    return {controls::deskFont().family(), points, bold};
}

QStringList linesInCell(const print::TextItem &item, bool isText)
{
    const bool oneLine = !isText || print::pointsOnOneLine(item) >= item.font.points * leastForOneLine;
    return oneLine ? QStringList{item.text} : print::linesOf(item);
}

SheetRows::SheetRows(const Sheet &sheet, const SheetRoom &room)
    : sheet_(sheet)
{
    for (std::size_t column = 0; column < sheet.columns.size(); ++column) {
        const QString total = sheet.totals.empty() ? QString() : shownText(sheet.totals[column]);
        needed_.push_back(std::max({widthOf(sheet.columns[column].caption, true), widthOf(total, true),
                                    widthOf(longestText(sheet.rows, column), false)}));
    }
    layOut(room, fullHeight);
    if (!sheet.isDense)
        return;
    // As few pages as can be; then as high as they allow.
    layOut(room, leastHeight);
    const std::size_t fewest = pageCount();
    for (double height = fullHeight; height > leastHeight; height -= heightStep) {
        layOut(room, height);
        if (pageCount() == fewest)
            return;
    }
    layOut(room, leastHeight);
}

double SheetRows::points() const
{
    return std::min(fullPoints, lineHeight_ * pointsPerMm);
}

void SheetRows::layOut(const SheetRoom &room, double lineHeight)
{
    lineHeight_ = lineHeight;
    fitColumns(room.width);
    countLines();
    breakPages(room);
}

/// What is left over goes to all columns. Where there is too little, texts give way first, then all numbers alike.
void SheetRows::fitColumns(double width)
{
    columns_ = needed_;
    double designed = 0;
    double spare = 0; // what texts can give
    const auto isText = [this](std::size_t column) { return sheet_.columns[column].kind == Column::Kind::Text; };
    const auto canGive = [&](std::size_t column) {
        return isText(column) ? std::max(0.0, columns_[column] - width * leastTextPart) : 0.0;
    };
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        columns_[column] = columns_[column] * points() / fullPoints + gap;
        designed += sheet_.columns[column].width;
        spare += canGive(column);
    }
    const double left = width - std::accumulate(columns_.begin(), columns_.end(), 0.0);
    const double given = std::min(spare, std::max(0.0, -left));
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        if (left > 0)
            columns_[column] += left * sheet_.columns[column].width / designed;
        else if (given > 0)
            columns_[column] -= given * canGive(column) / spare;
    }
    const double taken = std::accumulate(columns_.begin(), columns_.end(), 0.0);
    for (double &column : columns_)
        column *= std::min(1.0, width / taken);
}

void SheetRows::countLines()
{
    lines_.assign(sheet_.rows.size(), 1);
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        const double needed = needed_[column] * points() / fullPoints + gap;
        if (sheet_.columns[column].kind != Column::Kind::Text || needed <= columns_[column] + tolerance)
            continue;
        for (std::size_t row = 0; row < sheet_.rows.size(); ++row) {
            const print::TextItem item{.text = shownText(sheet_.rows[row][column]),
                                       .box = {0, 0, columns_[column], lineHeight_},
                                       .font = sheetFont(points())};
            lines_[row] = std::max(lines_[row], int(linesInCell(item, true).size()));
        }
    }
}

void SheetRows::breakPages(const SheetRoom &room)
{
    const std::size_t count = lines_.size();
    const std::size_t tail = count - std::min(companions, count); // from here on one piece with the totals
    starts_ = {0};
    double left = room.firstPage - lineHeight_; // below the captions
    for (std::size_t row = 0; row <= tail && row < count; ++row) {
        const std::size_t end = row == tail ? count : row + 1;
        double needed = row == tail && !sheet_.totals.empty() ? lineHeight_ : 0;
        for (std::size_t one = row; one < end; ++one)
            needed += heightOf(one);
        const bool isFull = sheet_.isDense && end - starts_.back() > mostDenseRows;
        if (row > starts_.back() && (isFull || needed > left + tolerance)) {
            starts_.push_back(row);
            left = room.laterPages - lineHeight_;
        }
        left -= needed;
    }
}

double SheetRows::lastHeight() const
{
    double height = lineHeight_ * (sheet_.totals.empty() ? 1 : 2);
    for (std::size_t row = starts_.back(); row < lines_.size(); ++row)
        height += heightOf(row);
    return height;
}

} // namespace statistics
