#pragma once

#include <QString>
#include <QStringList>

namespace ado {

/// What a session with PostgreSQL is told at its beginning, by whichever way it came.
namespace postgresSession {

/// Literals are read so when the layer looks for a second statement. Without a literal of their own.
inline const QStringList readAsTheLayer{QStringLiteral("SET standard_conforming_strings = on"),
                                        QStringLiteral("SET client_encoding = UTF8")};

/// No desk holds the others without end: who waits for a lock is told after eight seconds, who stands still within a
/// transaction is cut off after thirty, and one whose machine is gone after about fourteen. Where the clinic's server has
/// times of its own they stay.
inline const QString patience = QStringLiteral(
    "SELECT set_config(name, wanted, false) FROM (VALUES ('lock_timeout', '8s'), "
    "('idle_in_transaction_session_timeout', '30s'), ('tcp_keepalives_idle', '5'), ('tcp_keepalives_interval', '3'), "
    "('tcp_keepalives_count', '3'), ('tcp_user_timeout', '10s')) AS asked (name, wanted) "
    "JOIN pg_catalog.pg_settings USING (name) WHERE source = 'default'");

/// In a session of the host's nothing more than that a lock is not waited for without end: how long the host may stand still
/// in its own transaction is its affair.
inline const QString lentPatience = QStringLiteral("SELECT set_config(name, '8s', false) FROM pg_catalog.pg_settings "
                                                   "WHERE name = 'lock_timeout' AND source = 'default'");

} // namespace postgresSession

} // namespace ado
