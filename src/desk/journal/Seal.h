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

/// From here on the rows that this session of the embedded engine writes get their place and hash, and the machine and user
/// that wrote them, within their own transaction. Rows that others left without are given theirs first. On a server the
/// database itself does so. Nothing happens in a database without a journal.
void attend(ado::Connection &connection);

/// Gives rows without a place theirs, in the order in which they came; returns how many. Raises RuntimeError, where the
/// session may not do that, too.
qint64 sealOpen(ado::Connection &connection);

} // namespace journal
