#pragma once

#include <QCache>
#include <QFont>
#include <QPointF>
#include <QStaticText>
#include <QStyleOptionViewItem>

class QPainter;

namespace controls {

/// The texts of a list's cells, each shaped and measured once: a list shows the same ones again and again, and to put a short
/// text into glyphs takes longer than to draw it.
class CellTexts
{
public:
    /// Pixels of a text in one line.
    qreal widthOf(const QString &text, const QFont &font) const { return shaped(text, font).width; }
    /// Draws the cell's text as the style would. False where there is more to a cell than a text in one line: the style draws it.
    bool draw(QPainter *painter, const QStyleOptionViewItem &cell) const;

private:
    struct Shaped
    {
        QFont font;
        QStaticText glyphs;
        qreal width;
        qreal height;
    };
    const Shaped &shaped(const QString &text, const QFont &font) const;

    static constexpr int Most = 600; ///< about what two windows full of lists show
    mutable QCache<QString, Shaped> known_{Most};
};

} // namespace controls
