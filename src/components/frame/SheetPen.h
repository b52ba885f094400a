#pragma once

#include "platform/controls/Palette.h"
#include "platform/print/Document.h"

#include <QPainter>

namespace statistics {

/// Draws on the pages of a document; places are mm from the corner inside the margins. Paper is white and its texts are
/// black or red on every desktop.
class SheetPen
{
public:
    explicit SheetPen(QSizeF paper);

    double width() const { return document_.paper().width() - 2 * margin; }
    double height() const { return document_.paper().height() - 2 * margin; }

    void beginPage();
    void endPage();
    const print::Document &document() const { return document_; }

    /// On one line in the middle of its box, smaller where it is too wide for it; never cut.
    void write(const print::TextItem &item, controls::Ink ink = controls::Ink::Plain);
    /// The text in these lines, each as high as the box, one below the other.
    void writeLines(const print::TextItem &item, const QStringList &lines, controls::Ink ink = controls::Ink::Plain);
    void rule(double x, double y, double width, double weight, bool faint = false);
    void picture(const QRectF &box, const QImage &image);

private:
    void draw(const print::TextItem &item, controls::Ink ink);

    static constexpr double margin = 10;

    print::Document document_;
    print::Drawing page_;
    QPainter painter_;
};

} // namespace statistics
