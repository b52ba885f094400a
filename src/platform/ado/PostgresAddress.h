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

/// Whether the library knows them all by name.
bool areKnown(const PostgresParameters &parameters);
/// Whether one is looked for among several that takes writes.
bool lookForWriter(const PostgresParameters &parameters);
/// The same servers, that of the place in the list and those before it behind the others.
PostgresParameters beginningAfter(int place, PostgresParameters parameters);
/// Where in the list that server stands, -1 for nowhere.
int placeOf(const QString &host, const QString &port, const PostgresParameters &parameters);

} // namespace ado
