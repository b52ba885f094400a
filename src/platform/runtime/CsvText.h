#pragma once

#include <QString>

namespace runtime {

/// Cells of a file that a spreadsheet opens.

/// A text so that a spreadsheet neither runs nor changes it. One that it would take for a formula goes behind an apostrophe, but
/// for a negative number. Digits that are no number become the formula of a text, ="00012": it would take the zeros off a
/// chart number, round a long code and make a day of "12-3", and an apostrophe would become a part of them. A whole date,
/// 2026-06-01, it may know as one.
QString spreadsheetText(const QString &text);
/// The text that it was made of; any other one as it is.
QString fromSpreadsheetText(const QString &cell);

/// As it stands between two commas (RFC 4180): in quotation marks where it needs them.
QString csvCell(QString text);

} // namespace runtime
