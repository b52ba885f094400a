#pragma once

#include "platform/ado/Connection.h"

#include <QHash>
#include <QString>

namespace schema {

/// Two texts that define the same thing are the same in this form: what an engine adds to or drops from the statement
/// that it was given is left out.
QString plainDefinition(const QString &statement);

/// As they stand in the database, in plain form, by name in small letters.
QHash<QString, QString> indexDefinitions(ado::Connection &connection);
/// The statements that made the tables, as the embedded engine keeps them, by name in small letters.
QHash<QString, QString> tableStatementsAsKept(ado::Connection &connection);
/// The triggers of a database, in plain form, by "TABLE NAME" in small letters.
QHash<QString, QString> triggerDefinitions(ado::Connection &connection);
/// The bodies of the journal's functions on a server.
QHash<QString, QString> journalDefinitions(ado::Connection &connection);
/// The bodies of the functions behind LIKE on a server, and its operators with an empty one.
QHash<QString, QString> likeDefinitions(ado::Connection &connection);

} // namespace schema
