#include "desk/undo/DumpedRows.h"

#include "desk/backup/PostgresTool.h"

#include <QRegularExpression>

#include <algorithm>

namespace undo {

namespace {

/// The sign that stands behind a backslash in a cell, as the server writes it.
char signBehind(char escaped)
{
    constexpr std::pair<char, char> signs[]{{'b', '\b'}, {'f', '\f'}, {'n', '\n'},
                                            {'r', '\r'}, {'t', '\t'}, {'v', '\v'}};
    for (const auto &[letter, sign] : signs) {
        if (letter == escaped)
            return sign;
    }
    return escaped;
}

QJsonValue valueOf(QByteArrayView cell)
{
    if (cell == "\\N")
        return QJsonValue::Null;
    QByteArray text;
    for (qsizetype at = 0; at < cell.size(); ++at) {
        const bool escaped = cell[at] == '\\' && at + 1 < cell.size();
        text += escaped ? signBehind(cell[++at]) : cell[at];
    }
    return QString::fromUtf8(text);
}

QList<QByteArrayView> cellsOf(QByteArrayView line)
{
    QList<QByteArrayView> cells;
    for (;;) {
        const qsizetype end = line.indexOf('\t');
        cells << line.first(end < 0 ? line.size() : end);
        if (end < 0)
            return cells;
        line = line.sliced(end + 1);
    }
}

/// The table's columns in the order of the script, in the clinic's spelling; empty for others'.
QStringList columnsIn(const QString &list, const schema::TablePlan &table)
{
    QStringList columns;
    const QStringList names = QString(list).remove(u'"').split(QStringLiteral(", "));
    for (const QString &name : names) {
        const auto known = std::ranges::find_if(table.columns, [&](const schema::ColumnPlan &column) {
            return name.compare(QLatin1String(column.name), Qt::CaseInsensitive) == 0;
        });
        columns << (known == table.columns.end() ? QString() : QString::fromLatin1(known->name));
    }
    return columns;
}

QByteArrayView takeLine(QByteArrayView &rest)
{
    const qsizetype end = rest.indexOf('\n');
    const QByteArrayView line = rest.first(end < 0 ? rest.size() : end);
    rest = rest.sliced(std::min(rest.size(), line.size() + 1));
    return line;
}

} // namespace

QList<QJsonObject> rowsInScript(QByteArrayView script, const schema::TablePlan &table, const QString &column,
                                qint64 number)
{
    static const QRegularExpression head(QStringLiteral("^COPY \\S+ \\((.*)\\) FROM stdin;$"));
    const QByteArray asked = QByteArray::number(number);
    QList<QJsonObject> rows;
    QStringList columns;
    while (!script.isEmpty()) {
        const QByteArrayView line = takeLine(script);
        if (columns.isEmpty()) {
            if (line.startsWith("COPY "))
                columns = columnsIn(head.match(QString::fromUtf8(line)).captured(1), table);
            continue;
        }
        if (line == "\\.")
            break;
        const QList<QByteArrayView> cells = cellsOf(line);
        if (cells.value(columns.indexOf(column)) != asked)
            continue;
        QJsonObject row;
        for (qsizetype at = 0; at < std::min(columns.size(), cells.size()); ++at) {
            if (!columns[at].isEmpty())
                row.insert(columns[at], valueOf(cells[at]));
        }
        rows << row;
    }
    return rows;
}

QList<QJsonObject> rowsInDump(const QString &file, const schema::TablePlan &table, const QString &column, qint64 number)
{
    const QByteArray script = backup::runPostgresTool(
        QStringLiteral("pg_restore"), {QStringLiteral("--data-only"), QStringLiteral("--file=-"),
                                       QStringLiteral("--table=") + QString::fromLatin1(table.name).toLower(), file});
    return rowsInScript(script, table, column, number);
}

} // namespace undo
