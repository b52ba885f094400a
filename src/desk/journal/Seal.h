#pragma once

#include "platform/ado/Connection.h"

#include <QByteArray>
#include <QVariant>

#include <optional>
#include <vector>

namespace journal {

using Part = std::optional<QByteArray>;
/// Of a value as the database tells it.
Part partOf(const QVariant &value);

/// The hash of a journalled row: of the hash before it, its place, and what it says.
QByteArray sealOf(const std::vector<Part> &parts);

/// The columns that a hash is taken of, behind the hash before it, in that order.
extern const char *const SealedColumns;

/// From here on the rows that this session of the embedded engine writes name the machine and user that wrote them. On a
/// server the database itself does so. Nothing happens in a database without a journal.
void attend(ado::Connection &connection);

/// Gives rows without a place theirs, in the order in which they came, whoever wrote them; returns how many, at most
/// schema::SealedAtOnce. 0 as well while another session does so on a server. Raises RuntimeError, where the session may not
/// do that, too.
qint64 sealSome(ado::Connection &connection);
/// The same for all that there are.
qint64 sealOpen(ado::Connection &connection);
/// Whether a file holds rows without a place before the chain's end, which sealSome() passes over: on the server that they
/// came from they were saved behind later ones.
bool hasLateRows(ado::Connection &connection);

} // namespace journal
