#pragma once

#include "platform/ado/Connection.h"

#include <QSqlDatabase>

class QSqlQueryModel;

namespace bench {

/// The toolkit's own session on the same file, set up as the layer's is; the same one for the same file.
QSqlDatabase stockSession(const ado::Connection &connection);

/// Has the toolkit's model fetch all of its rows, as a grid does that is scrolled to its end; returns their number.
int fetchAll(QSqlQueryModel &model);
/// Rows of a statement in a model of the toolkit. Raises std::runtime_error.
int stockRows(const ado::Connection &connection, const QString &statement);

} // namespace bench
