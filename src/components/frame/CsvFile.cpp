#include "components/frame/CsvFile.h"

#include "platform/runtime/CsvText.h"
#include "platform/runtime/RuntimeError.h"

#include <QSaveFile>

namespace statistics {

namespace {

QString cellText(const Cell &cell)
{
    const QString text = plainText(cell);
    return isNumber(cell) ? text : runtime::csvCell(runtime::spreadsheetText(text));
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
