#pragma once

#include <QString>
#include <QStringView>

#include <memory>

struct sqlite3;

namespace ado {

/// LIKE as the clinic's server reads it: '%' any text, '_' one sign, "[a-f]" and "[^a-f]" one sign of a class or out of
/// it, case ignored. A '[' that is never closed matches nothing, and "[]" neither. After `escape`, if one is given, a sign
/// stands for itself.
bool like(QStringView text, QStringView pattern, char32_t escape = 0);

/// The same as a regular expression of the kind that begins with "(?is)", in which no quote and no sign of a statement
/// stands for itself.
QString likeExpression(QStringView pattern, char32_t escape = 0);

/// Puts it in the place of the embedded engine's own operator on this connection, until that is closed: `closed` is then
/// true.
void installLikeOperator(sqlite3 *handle, const std::shared_ptr<bool> &closed = std::make_shared<bool>());

} // namespace ado
