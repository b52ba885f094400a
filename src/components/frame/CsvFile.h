#pragma once

#include "components/frame/Sheet.h"

#include <QString>

namespace statistics {

/// The sheet as comma-separated text with a byte-order mark, by which spreadsheets know Korean: title and period, the
/// summary, the table in the order of `rows`, the totals.
QByteArray csvOf(const QString &title, const QString &period, const Sheet &sheet, const std::vector<Row> &rows);

/// All or nothing; raises RuntimeError.
void saveFile(const QString &path, const QByteArray &content);

} // namespace statistics
