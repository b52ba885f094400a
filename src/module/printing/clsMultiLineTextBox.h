#pragma once

#include <QPlainTextEdit>
#include <QString>
#include <QStringList>

/// Reads the lines of a multi-line text box as they are displayed, soft breaks included.
class clsMultiLineTextBox
{
public:
    std::int32_t MLT_GetLineCount(const QPlainTextEdit &txt) const;
    /// Line from 0, at most its first 1000 characters, without blanks at its end; empty beyond the last line.
    QString MLT_GetLine(const QPlainTextEdit &txt, std::int32_t lngLine) const;
    /// True always.
    bool MLT_GetAllLines(const QPlainTextEdit &txt, QStringList &arrLines) const;
};
