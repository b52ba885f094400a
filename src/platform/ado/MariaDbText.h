#pragma once

#include <QString>

namespace ado {

/// The statement with each LIKE as the regular expression that means what LIKE means here: the server's own LIKE knows no
/// classes. Raises Database where the pattern is anything but one literal.
QString withLikeAsExpression(const QString &statement);

/// The statement with those literals in hexadecimal digits that the driver would not send as they are. Raises Database where
/// a name is one of them.
QString withTextsThatArriveWhole(const QString &statement);

/// Both.
QString asMariaDbReads(const QString &statement);

/// What the server says of a statement, without what those literals hold.
QString withoutHex(QString serverText);

} // namespace ado
