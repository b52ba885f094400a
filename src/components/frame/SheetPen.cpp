#include "components/frame/SheetPen.h"

#include "platform/print/ShownText.h"

#include <QFontMetricsF>

namespace statistics {

namespace {

constexpr controls::Scheme onPaper = controls::Scheme::Light;
constexpr double padding = 0.6; // of a text in its box, mm

QRectF onGrid(const QRectF &box)
{
    return {box.topLeft() * print::gridPerMm, box.size() * print::gridPerMm};
}

} // namespace

SheetPen::SheetPen(QSizeF paper)
    : document_(paper)
{
}

void SheetPen::beginPage()
{
    page_ = print::Drawing();
    painter_.begin(&page_.strokes);
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.translate(margin * print::gridPerMm, margin * print::gridPerMm);
}

void SheetPen::endPage()
{
    painter_.end();
    document_.addDrawing(page_);
}

void SheetPen::write(const print::TextItem &item, controls::Ink ink)
{
    writeLines(item, {item.text}, ink);
}

void SheetPen::writeLines(const print::TextItem &item, const QStringList &lines, controls::Ink ink)
{
    if (item.text.isEmpty())
        return;
    page_.words << item.text;
    print::TextItem one = item;
    for (const QString &line : lines) {
        one.text = line;
        draw(one, ink);
        one.box.translate(0, item.box.height());
    }
}

void SheetPen::draw(const print::TextItem &item, controls::Ink ink)
{
    QFont font(item.font.family);
    font.setPixelSize(int(print::pointsOnOneLine(item) / print::pointsPerInch * print::gridPerInch));
    font.setBold(item.font.bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setKerning(false);
    painter_.setFont(font);
    painter_.setPen(controls::ink(ink, onPaper));
    const int side = item.align == print::Align::Right    ? Qt::AlignRight
                     : item.align == print::Align::Center ? Qt::AlignHCenter
                                                          : Qt::AlignLeft;
    painter_.drawText(onGrid(item.box.adjusted(padding, 0, -padding, 0)),
                      side | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip,
                      print::shownText(item.text, item.font));
}

void SheetPen::rule(double x, double y, double width, double weight, bool faint)
{
    const QColor color = faint ? controls::chartScale(onPaper) : controls::ink(controls::Ink::Plain, onPaper);
    painter_.setPen(QPen(color, weight * print::gridPerMm));
    painter_.drawLine(QPointF(x, y) * print::gridPerMm, QPointF(x + width, y) * print::gridPerMm);
}

void SheetPen::picture(const QRectF &box, const QImage &image)
{
    painter_.setRenderHint(QPainter::LosslessImageRendering); // letters and white stay what they are
    painter_.drawImage(onGrid(box), image);
}

} // namespace statistics
