#pragma once

#include <QString>

#include <utility>

namespace ado {

/// How long PostgreSQL's library waits for a server that went away silently, as when its power fails: about nine seconds
/// instead of minutes. The wait for an answer, unlike that for a packet's receipt, is ended by the keepalives alone.
inline const std::pair<QString, QString> libpqPatience[]{
    {QStringLiteral("connect_timeout"), QStringLiteral("5")},
    {QStringLiteral("tcp_user_timeout"), QStringLiteral("10000")},
    {QStringLiteral("keepalives_idle"), QStringLiteral("5")},
    {QStringLiteral("keepalives_interval"), QStringLiteral("3")},
    {QStringLiteral("keepalives_count"), QStringLiteral("3")},
};

} // namespace ado
