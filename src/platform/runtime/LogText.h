#pragma once

#include <QString>

namespace runtime {

/// A server's message without the values in it: what stands from the first quote or bracket to the last, and words that are
/// not plain English, as a name is not.
QString withoutQuoted(QString message);

/// The message without the words of a statement: a server may name one without quoting it.
QString withoutWordsOf(const QString &statement, const QString &message);

/// Fit for one line of the log, whatever is in it: no sign that a reader would take for a line's end, and no more than a
/// line's length.
QByteArray oneLine(QString text);

} // namespace runtime
