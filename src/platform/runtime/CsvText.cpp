#include "platform/runtime/CsvText.h"

#include <QRegularExpression>

namespace runtime {

namespace {

/// Blanks ahead are taken off by some spreadsheets; where Hangul is typed the wide signs are read as the narrow ones.
bool looksLikeFormula(const QString &text)
{
    static const QRegularExpression formula(QStringLiteral("^['\\s]*[=+\\-@＝＋－＠]|^'*[\\t\\r\\n]"));
    static const QRegularExpression number(QStringLiteral("^-\\d+(\\.\\d+)?$"));
    return text.contains(formula) && !text.contains(number);
}

} // namespace

QString guardedText(const QString &text)
{
    return looksLikeFormula(text) ? u'\'' + text : text;
}

QString withoutGuard(const QString &cell)
{
    // Apostrophes that were there before have got one more.
    const QString text = cell.mid(1);
    return cell.startsWith(u'\'') && guardedText(text) != text ? text : cell;
}

QString csvCell(QString text)
{
    static const QRegularExpression special(QStringLiteral("[,\"\\r\\n]|^\\s|\\s$"));
    return text.contains(special) ? u'"' + text.replace(u'"', QStringLiteral("\"\"")) + u'"' : text;
}

} // namespace runtime
