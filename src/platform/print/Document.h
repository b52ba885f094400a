#pragma once

#include "platform/print/Page.h"
#include "platform/print/PageTable.h"

#include <QMarginsF>
#include <QSizeF>

#include <utility>
#include <vector>

namespace print {

inline constexpr QSizeF A4{210, 297};
inline constexpr QSizeF A5{148, 210};

/// What one run puts on paper, page by page: tables that break across pages, and text boxes and pictures at fixed places.
/// Nothing is sent anywhere by composing it. Sizes are mm.
class Document
{
public:
    explicit Document(QSizeF paper = A4, QMarginsF margins = {});

    const QSizeF &paper() const { return paper_; }
    /// The same pages, drawn as large as they fit on another paper.
    Document onPaper(const QSizeF &paper) const;
    /// How much larger than composed the pages are drawn.
    double scale() const { return scale_; }
    void setFont(const TextFont &font) { font_ = font; }
    const TextFont &font() const { return font_; }

    /// Puts the rows below one another from the upper margin on, each whole on one page. What is not empty is drawn.
    void addTable(const PageTable &table);
    /// A text at a fixed place of the last page.
    void addText(const TextItem &text);
    /// A picture at a fixed place of the last page.
    void addPicture(const QImage &image, const QRectF &box);
    /// A page that was drawn elsewhere: the last one where that is empty still, otherwise a new one.
    void addDrawing(const Drawing &drawing);
    void addPage() { pages_.emplace_back(); }

    const std::vector<Page> &pages() const { return pages_; }
    int pageCount() const { return int(pages_.size()); }

private:
    void placeRow(const PageTable &table, const PageTable::Row &row, double top);

    QSizeF paper_;
    double scale_ = 1;
    QMarginsF margins_;
    TextFont font_;
    std::vector<Page> pages_;
};

} // namespace print
