#pragma once

#include <QPlainTextEdit>
#include <QString>
#include <QStringList>

/// Reads the lines of a multi-line text box as they are displayed, soft breaks included.
class clsMultiLineTextBox
{
public:
    qint32 MLT_GetLineCount(const QPlainTextEdit &txt) const;
    /// Line from 0, at most its first 1000 characters, without blanks at its end; empty beyond the last line.
    QString MLT_GetLine(const QPlainTextEdit &txt, qint32 lngLine) const;
    /// True always.
    bool MLT_GetAllLines(const QPlainTextEdit &txt, QStringList &arrLines) const;
};
