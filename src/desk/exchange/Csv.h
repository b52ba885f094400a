#pragma once

#include <QByteArray>
#include <QStringList>

#include <vector>

/// Comma-separated text (RFC 4180) as spreadsheets write and read it.
namespace exchange {

struct Record
{
    int line = 0; ///< that it begins on, counted from 1
    QStringList cells;
};

/// A file's text: UTF-8 with or without its mark, or else the Korean code page 949. Raises RuntimeError for other bytes.
QString decoded(const QByteArray &bytes);

/// Line ends are CR LF, LF or CR. Records without any text are left out. Raises RuntimeError, with the line, for a quoted
/// cell that does not end or goes on behind its quote.
std::vector<Record> readCsv(const QString &text);

/// A record with its line end.
QString csvLine(const QStringList &cells);

} // namespace exchange
