#pragma once

#include <QStringList>

namespace ado {

/// How long PostgreSQL's library waits for a server that went away silently, as when its power fails: about nine seconds
/// instead of minutes. The wait for an answer, unlike that for a packet's receipt, is ended by the keepalives alone.
inline const QStringList libpqPatience{
    QStringLiteral("connect_timeout=5"),  QStringLiteral("tcp_user_timeout=10000"),
    QStringLiteral("keepalives_idle=5"),  QStringLiteral("keepalives_interval=3"),
    QStringLiteral("keepalives_count=3"),
};

} // namespace ado
