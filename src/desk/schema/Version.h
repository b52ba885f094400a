#pragma once

#include "platform/ado/Foresight.h"

#include <QStringList>

#include <optional>

namespace schema {

enum class Dialect;

/// What this program makes. It counts up with every change of tables, indexes, the journal or the LIKE operator.
inline constexpr int CurrentVersion = 2;

/// The one row of the small table beside the ten. A database without it was made before there was one: version 0.
struct Mark
{
    int version = 0;
    int generation = 0; ///< counts up with every restore
};

/// What readMark() will read.
void foreseeMark(ado::Foresight &next, const ado::Connection &connection);
/// Empty where it cannot be told, to a role that may not read it.
std::optional<Mark> readMark(ado::Connection &connection);

/// Raises RuntimeError for a database, or a backup, of a newer program: this one would not keep all of it.
void demandNoNewer(int version, const QString &where);
std::optional<Mark> demandNoNewer(ado::Connection &connection);
/// What a desk says at its start about a database that an upgrade would serve; empty for none.
QString upgradeNotice(const std::optional<Mark> &mark);

/// Makes the table with its row; a row that is there keeps its generation.
QStringList markStatements(Dialect dialect);
/// The row of a database that has the table.
QString selectMarkStatement();

} // namespace schema
