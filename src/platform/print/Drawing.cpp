#include "platform/controls/Palette.h"
#include "platform/print/Lengths.h"
#include "platform/print/Page.h"
#include "platform/print/ShownText.h"

#include <QFontMetricsF>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace print {

namespace {

// Texts are measured and set in the dots of a fine grid, so that a line is as wide on the screen as on paper.
/// Even a text that fills its box keeps this distance to its neighbour.
constexpr double gapMm = 1.2;
/// One line is kept down to this part of the font's size before it is broken into more.
constexpr double leastForOneLine = 0.8;
constexpr int mostLines = 3;

struct FittedText
{
    QFont font;
    QStringList lines;
};

QFont gridFont(const TextFont &font, double scale = 1)
{
    QFont made(font.family);
    made.setPixelSize(std::max(1, int(std::floor(font.points / pointsPerInch * gridPerInch * scale))));
    made.setBold(font.bold);
    made.setHintingPreference(QFont::PreferNoHinting);
    made.setKerning(false);
    return made;
}

/// Room for letters in the item's box.
double textWidth(const TextItem &item)
{
    const double boxWidth = item.box.width() * gridPerMm;
    return std::max(boxWidth - gapMm * gridPerMm, boxWidth / 2);
}

/// 1, or less where the text is too wide for one line of its box.
double scaleOnOneLine(const TextItem &item, const QString &text)
{
    const double needed = QFontMetricsF(gridFont(item.font)).horizontalAdvance(text);
    return std::min(1.0, textWidth(item) / std::max(1.0, needed));
}

/// The text broken at words, inside a word only where one is wider than the box.
QStringList broken(const QString &text, const QFont &font, double width)
{
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QStringList lines;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines << text.mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    return lines;
}

/// The largest setting in exactly that many lines, not smaller than `least`.
std::optional<double> scaleForLines(const TextItem &item, const QString &text, int count, double width, double height,
                                    double least)
{
    const double lineAtFull = QFontMetricsF(gridFont(item.font)).height();
    for (double scale = std::min(1.0, height / count / lineAtFull); scale >= least; scale *= 0.96) {
        if (broken(text, gridFont(item.font, scale), width).size() <= count)
            return scale;
    }
    return std::nullopt;
}

FittedText fitted(const TextItem &item)
{
    const QString text = shownText(item.text, item.font);
    const double width = textWidth(item);
    double scale = scaleOnOneLine(item, text);
    if (!item.mayBreak || scale >= leastForOneLine)
        return {gridFont(item.font, scale), {text}};

    int lines = 1;
    for (int count = 2; count <= mostLines; ++count) {
        if (const auto found = scaleForLines(item, text, count, width, item.box.height() * gridPerMm, scale)) {
            scale = *found;
            lines = count;
        }
    }
    const QFont font = gridFont(item.font, scale);
    return {font, lines == 1 ? QStringList{text} : broken(text, font, width)};
}

double startOf(Align align, const QRectF &box, double textWidth)
{
    switch (align) {
    case Align::Right:
        return box.right() - textWidth;
    case Align::Center:
        return box.center().x() - textWidth / 2;
    case Align::Left:
        break;
    }
    return box.left();
}

void drawText(QPainter &painter, const TextItem &item)
{
    if (item.text.isEmpty())
        return;
    const FittedText text = fitted(item);
    const QFontMetricsF metrics(text.font);
    // One line keeps the row's baseline, however small it was set.
    const QFontMetricsF row(text.lines.size() == 1 ? gridFont(item.font) : text.font);
    const QRectF box(item.box.topLeft() * gridPerMm, item.box.size() * gridPerMm);
    double baseline = box.top() + row.ascent();
    if (item.middle)
        baseline += (box.height() - row.height() * double(text.lines.size())) / 2;
    painter.setFont(text.font);
    for (const QString &line : text.lines) {
        painter.drawText(QPointF(startOf(item.align, box, metrics.horizontalAdvance(line)), baseline), line);
        baseline += metrics.height();
    }
}

} // namespace

void drawPage(QPainter &painter, const Page &page, double dotsPerInch)
{
    painter.save();
    painter.scale(dotsPerInch / gridPerInch, dotsPerInch / gridPerInch);
    painter.setPen(controls::colors(controls::Ground::Paper).text);
    for (const PictureItem &picture : page.pictures)
        painter.drawImage(QRectF(picture.box.topLeft() * gridPerMm, picture.box.size() * gridPerMm), picture.image);
    for (const TextItem &text : page.texts)
        drawText(painter, text);
    // What is played back is enlarged by the dots of the device, which the scale above has done.
    const QPicture &strokes = page.drawing.strokes;
    painter.scale(double(strokes.logicalDpiX()) / painter.device()->logicalDpiX(),
                  double(strokes.logicalDpiY()) / painter.device()->logicalDpiY());
    painter.drawPicture(0, 0, strokes);
    painter.restore();
}

double lineHeight(const TextFont &font)
{
    return QFontMetricsF(gridFont(font)).height() / gridPerMm;
}

double pointsOnOneLine(const TextItem &item)
{
    const QFont font = gridFont(item.font, scaleOnOneLine(item, shownText(item.text, item.font)));
    return font.pixelSize() * pointsPerInch / gridPerInch;
}

double leastPoints(const Page &page)
{
    double least = page.drawing.strokes.isNull() ? std::numeric_limits<double>::max() : 0;
    for (const TextItem &item : page.texts) {
        if (!item.text.isEmpty())
            least = std::min(least, fitted(item).font.pixelSize() * pointsPerInch / gridPerInch);
    }
    return least;
}

double widthOnOneLine(const TextItem &item)
{
    const QString text = shownText(item.text, item.font);
    return QFontMetricsF(gridFont(item.font, scaleOnOneLine(item, text))).horizontalAdvance(text) / gridPerMm;
}

QStringList linesOf(const TextItem &item)
{
    return broken(shownText(item.text, item.font), gridFont(item.font), textWidth(item));
}

} // namespace print
