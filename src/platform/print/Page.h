#pragma once

#include "platform/print/Lengths.h"

#include <QImage>
#include <QPainter>
#include <QPicture>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace print {

/// The grid on which all pages are laid out.
inline constexpr double gridPerInch = 1200;
inline constexpr double gridPerMm = gridPerInch / mmPerInch;

enum class Align { Left, Right, Center };

struct TextFont
{
    QString family;
    double points = 9;
    bool bold = false;
};

/// A text in its box (mm). A text wider than its box is drawn smaller, never cut; where the box has room for more lines it
/// is broken rather than made very small.
struct TextItem
{
    QString text;
    QRectF box;
    TextFont font;
    Align align = Align::Left;
    bool middle = false;   ///< vertically in the middle of the box; otherwise at its top
    bool mayBreak = false; ///< into several lines
};

struct PictureItem
{
    QImage image;
    QRectF box; ///< mm
};

/// Lines and letters that were drawn elsewhere, on the grid from the sheet's corner, and the words in it.
struct Drawing
{
    QPicture strokes = QPicture();
    QStringList words;
};

struct Page
{
    std::vector<PictureItem> pictures;
    std::vector<TextItem> texts;
    Drawing drawing;
};

/// Draws a page with the sheet's upper left corner at the painter's origin. `dotsPerInch` is the painter's scale. Screen,
/// PDF and printer all come from here.
void drawPage(QPainter &painter, const Page &page, double dotsPerInch);

/// Height of one line of this font, mm.
double lineHeight(const TextFont &font);
/// Size of the letters in which a text that may not break is drawn into its box.
double pointsOnOneLine(const TextItem &item);
/// Width of a text as it is drawn on one line, mm.
double widthOnOneLine(const TextItem &item);
/// Size of the smallest letters as they are drawn; 0 for a page that was drawn elsewhere, which does not tell.
double leastPoints(const Page &page);
/// A text in lines that fit its box at its full size, broken at words where it can be.
QStringList linesOf(const TextItem &item);

} // namespace print
