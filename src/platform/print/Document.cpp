#include "platform/print/Document.h"

#include "platform/runtime/RuntimeError.h"

#include <algorithm>

namespace print {

Document::Document(QSizeF paper, QMarginsF margins)
    : paper_(paper)
    , margins_(margins)
    , pages_(1)
{
}

Document Document::onPaper(const QSizeF &paper) const
{
    Document other = *this;
    other.paper_ = paper;
    other.scale_ = scale_ * std::min(paper.width() / paper_.width(), paper.height() / paper_.height());
    return other;
}

void Document::addTable(const PageTable &table)
{
    const double bottom = paper_.height() - margins_.bottom();
    // Heights are decimal fractions: a row that fits by its figures must not fail by the last bit.
    constexpr double tolerance = 1e-6;
    double top = margins_.top();
    for (const PageTable::Row &row : table.rows()) {
        const bool pageHasRows = top > margins_.top();
        if (pageHasRows && top + row.height > bottom + tolerance) {
            pages_.emplace_back();
            top = margins_.top();
        }
        placeRow(table, row, top);
        top += row.height;
    }
}

void Document::placeRow(const PageTable &table, const PageTable::Row &row, double top)
{
    double left = margins_.left();
    for (int column = 1; column <= table.columnCount();) {
        const PageTable::Cell &cell = row.cells[std::size_t(column) - 1];
        double width = 0;
        for (int end = column + cell.span; column < end; ++column)
            width += table.columnWidth(column);
        if (!cell.text.isEmpty()) {
            if (!(width > 0)) // a column whose width nobody gave
                throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall,
                                            QStringLiteral("폭이 없는 칸에는 인쇄할 수 없습니다: ") + cell.text);
            TextItem item{.text = cell.text, .box = {left, top, width, row.height}, .font = font_, .align = cell.align};
            item.middle = true;
            item.mayBreak = cell.align == Align::Left;
            item.font.bold = cell.bold;
            if (cell.points > 0)
                item.font.points = cell.points;
            addText(item);
        }
        left += width;
    }
}

void Document::addText(const TextItem &text)
{
    pages_.back().texts.push_back(text);
}

void Document::addPicture(const QImage &image, const QRectF &box)
{
    pages_.back().pictures.push_back({image, box});
}

void Document::addDrawing(const Drawing &drawing)
{
    const Page &last = pages_.back();
    if (!last.texts.empty() || !last.pictures.empty() || !last.drawing.strokes.isNull())
        pages_.emplace_back();
    pages_.back().drawing = drawing;
}

} // namespace print
