#include "platform/print/ShownText.h"

#include <QFontMetricsF>
#include <QHash>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace print {

namespace {

constexpr char16_t visibleBox = u'□';

bool isPlain(QChar c)
{
    return c.unicode() >= 0x20 && c.unicode() < 0x7f;
}

/// Whether the font, or one that stands in for it, has a picture of this sign. Asked once of each.
bool isKnown(char32_t sign, const TextFont &font)
{
    static QHash<std::pair<QString, char32_t>, bool> asked;
    const auto key = std::pair(font.family, sign);
    auto found = asked.constFind(key);
    if (found == asked.constEnd())
        found = asked.insert(key, QFontMetricsF(QFont(font.family)).inFontUcs4(sign));
    return *found;
}

/// What joins or varies other signs has no picture of its own.
bool isInvisible(char32_t sign)
{
    const QChar::Category category = QChar::category(sign);
    return category == QChar::Other_Format || (sign >= 0xfe00 && sign <= 0xfe0f);
}

QString shownSign(const QString &cluster, const TextFont &font)
{
    QString shown;
    for (const char32_t sign : cluster.toUcs4()) {
        if (isInvisible(sign))
            continue;
        if (QChar::category(sign) == QChar::Other_Control || QChar::category(sign) == QChar::Separator_Line
            || QChar::category(sign) == QChar::Separator_Paragraph)
            return QStringLiteral(" ");
        if (!isKnown(sign, font))
            return QString(QChar(visibleBox));
        shown += QString::fromUcs4(&sign, 1);
    }
    return shown;
}

} // namespace

QString shownText(const QString &text, const TextFont &font)
{
    if (std::all_of(text.begin(), text.end(), isPlain))
        return text;
    // Fonts have Korean syllables and letters with accents whole, not in parts.
    const QString whole = text.normalized(QString::NormalizationForm_C);
    QString shown;
    QTextBoundaryFinder clusters(QTextBoundaryFinder::Grapheme, whole);
    qsizetype start = 0;
    for (qsizetype end = clusters.toNextBoundary(); end >= 0; end = clusters.toNextBoundary()) {
        shown += shownSign(whole.sliced(start, end - start), font);
        start = end;
    }
    return shown;
}

} // namespace print
