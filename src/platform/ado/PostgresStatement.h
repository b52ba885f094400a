#pragma once

#include "platform/ado/Command.h"

#include <vector>

namespace ado {

/// What may be sent before the answers to what goes before it are read, as far as a statement's text tells.
namespace postgresStatement {

bool isSame(const Command &one, const Command &other);
bool holdsLiteral(const Command &statement);
/// Neither ends the transaction that it stands in nor goes on to carry rows by itself.
bool keepsTransaction(const QString &statement);
/// Writes nothing, as far as its first word tells: what reads, and what stands around it in a transaction.
bool isReading(const Command &statement);
/// Leaves the session's settings as they are, by which a literal behind it is read.
bool keepsSettings(const Command &statement);
/// Up to the first that must not be sent unless the answers before it are read: a literal is read by settings that one of
/// them may change. `settled`: what goes before them all does not.
std::vector<Command> sendable(std::vector<Command> statements, bool settled);

} // namespace postgresStatement

} // namespace ado
