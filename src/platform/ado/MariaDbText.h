#pragma once

#include <QString>

namespace ado {

/// The statement with each LIKE as the regular expression that means what LIKE means here: the server's own LIKE knows no
/// classes. Raises Database where the pattern is anything but one literal.
QString withLikeAsExpression(const QString &statement);

} // namespace ado
