#include "printing/clsMultiLineTextBox.h"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextLayout>

namespace {

constexpr qsizetype longestLine = 1000;

QStringList displayedLines(const QPlainTextEdit &txt)
{
    QStringList lines;
    for (QTextBlock block = txt.document()->begin(); block.isValid(); block = block.next()) {
        // Blocks are laid out when somebody asks for their size.
        txt.document()->documentLayout()->blockBoundingRect(block);
        const QTextLayout &layout = *block.layout();
        const QString text = block.text();
        for (int index = 0; index < layout.lineCount(); ++index) {
            const QTextLine line = layout.lineAt(index);
            lines << text.mid(line.textStart(), line.textLength());
        }
    }
    return lines;
}

} // namespace

qint32 clsMultiLineTextBox::MLT_GetLineCount(const QPlainTextEdit &txt) const
{
    return qint32(displayedLines(txt).size());
}

QString clsMultiLineTextBox::MLT_GetLine(const QPlainTextEdit &txt, qint32 lngLine) const
{
    QString line = displayedLines(txt).value(lngLine).left(longestLine);
    while (line.endsWith(QLatin1Char(' ')))
        line.chop(1);
    return line;
}

bool clsMultiLineTextBox::MLT_GetAllLines(const QPlainTextEdit &txt, QStringList &arrLines) const
{
    arrLines = displayedLines(txt);
    return true;
}
