#include "platform/runtime/CsvText.h"

#include <QRegularExpression>

namespace runtime {

namespace {

/// Blanks ahead are taken off by some spreadsheets; where Hangul is typed the wide signs are read as the narrow ones.
bool isFormula(const QString &text)
{
    static const QRegularExpression formula(QStringLiteral("\\A['\\s]*[=+\\-@＝＋－＠]|\\A'*[\\t\\r\\n]"));
    static const QRegularExpression number(QStringLiteral("\\A-\\d+(\\.\\d+)?\\z"));
    return text.contains(formula) && !text.contains(number);
}

bool isCode(const QString &text)
{
    static const QRegularExpression code(QStringLiteral("\\A[0-9][0-9eE./-]*\\z"));
    static const QRegularExpression date(QStringLiteral("\\A\\d{4}-\\d\\d-\\d\\d\\z"));
    return text.contains(code) && !text.contains(date);
}

} // namespace

QString spreadsheetText(const QString &text)
{
    if (isCode(text))
        return QStringLiteral("=\"%1\"").arg(text);
    return isFormula(text) ? u'\'' + text : text;
}

QString fromSpreadsheetText(const QString &cell)
{
    // What looked so before it was made has got an apostrophe more.
    for (const QString &text : {cell.mid(1), cell.mid(2).chopped(cell.size() > 2 ? 1 : 0)}) {
        if (text != cell && spreadsheetText(text) == cell)
            return text;
    }
    return cell;
}

QString csvCell(QString text)
{
    static const QRegularExpression special(QStringLiteral("[,\"\r\n]|^\\s|\\s$"));
    return text.contains(special) ? u'"' + text.replace(u'"', QStringLiteral("\"\"")) + u'"' : text;
}

} // namespace runtime
