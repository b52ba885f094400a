#pragma once

#include <QList>
#include <QString>

#include <utility>

namespace ado {

/// Names and values as the server's library takes them; of two of a name the later holds.
using PostgresParameters = QList<std::pair<QString, QString>>;

/// Takes "USER[:PASSWORD]@HOST[:PORT][,HOST[:PORT]...]/DB[?OPTION=VALUE&...]" apart. HOST may be a percent-encoded socket
/// folder, and every part of the path can stand among the options, too. Of several servers the library takes the first that
/// answers and is as `target_session_attrs` wants it.
PostgresParameters postgresParameters(const QString &address);

} // namespace ado
