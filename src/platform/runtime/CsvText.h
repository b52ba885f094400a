#pragma once

#include <QString>

namespace runtime {

/// Texts in the cells of a file that a spreadsheet opens.

/// A text that a spreadsheet would take for a formula goes behind an apostrophe, which `withoutGuard` takes off again. A
/// negative number is none.
QString guardedText(const QString &text);
QString withoutGuard(const QString &cell);

/// As it stands between two commas (RFC 4180): in quotation marks where it needs them.
QString csvCell(QString text);

} // namespace runtime
