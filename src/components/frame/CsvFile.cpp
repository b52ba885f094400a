#include "components/frame/CsvFile.h"

#include "platform/runtime/RuntimeError.h"

#include <QSaveFile>

namespace statistics {

namespace {

QString quoted(QString text)
{
    // A spreadsheet takes a text that begins so for a formula.
    if (!text.isEmpty() && QStringLiteral("=+-@\t").contains(text.front()))
        text.prepend(QLatin1Char('\''));
    static const QString special = QStringLiteral(",\"\r\n");
    for (const QChar &sign : std::as_const(text)) {
        if (special.contains(sign))
            return QLatin1Char('"') + text.replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"');
    }
    return text;
}

QString cellText(const Cell &cell)
{
    return isNumber(cell) ? plainText(cell) : quoted(plainText(cell));
}

void addLine(QString &csv, const Row &row)
{
    QStringList cells;
    for (const Cell &cell : row)
        cells << cellText(cell);
    csv += cells.join(QLatin1Char(',')) + QStringLiteral("\r\n");
}

} // namespace

QByteArray csvOf(const QString &title, const QString &period, const Sheet &sheet, const std::vector<Row> &rows)
{
    QString csv;
    addLine(csv, {title, period});
    for (const SummaryLine &line : sheet.summary)
        addLine(csv, {line.group, line.caption, line.amount});
    addLine(csv, {});
    Row captions;
    for (const Column &column : sheet.columns)
        captions.emplace_back(column.caption);
    addLine(csv, captions);
    for (const Row &row : rows)
        addLine(csv, row);
    if (!sheet.totals.empty())
        addLine(csv, sheet.totals);
    return QByteArray("\xEF\xBB\xBF") + csv.toUtf8();
}

void saveFile(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall,
                                    QStringLiteral("파일을 저장하지 못했습니다: %1\n%2").arg(path, file.errorString()));
}

} // namespace statistics
