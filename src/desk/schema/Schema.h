#pragma once

#include "clinic/Catalogue.h"
#include "clinic/Tables.h"
#include "platform/ado/Connection.h"

#include <QStringList>

#include <functional>

/// The clinic's tables as this desk makes them. The sale component has no schema of its own: it relies on these.
namespace schema {

enum class Dialect;
/// An ODBC source stands for the PostgreSQL server behind it; others are not opened.
Dialect dialectOf(const ado::Connection &connection);

/// Tables and indexes in an empty database. Raises RuntimeError, and leaves the database as it was, when it refuses,
/// also when the tables exist already. An ODBC source is taken when a PostgreSQL server stands behind it; other servers
/// bring their schema with their own installer.
void createSchema(ado::Connection &connection);

/// The parts of createSchema, for a bulk load that wants its indexes last and its rows in no journal; within the caller's
/// transaction.
void createTables(ado::Connection &connection);
void createIndexes(ado::Connection &connection);
/// `history` writes what an earlier journal held, before this one begins.
void createJournal(ado::Connection &connection, const std::function<void()> &history = {});
bool hasJournal(ado::Connection &connection);
/// After rows were written with keys of their own: new keys go on from the highest. A counter never goes back.
void continueKeys(ado::Connection &connection);
/// What does that, for the tables whose next key is taken already: for all of them, or for those that are asked for.
QStringList lateKeyStatements(ado::Connection &connection,
                              const std::function<bool(const clinic::Table &)> &asked = {});

/// What the catalogue has of the tables.
clinic::Catalogue foundTables(const ado::Connection &connection);

/// Whether every table that the desk and the component use is there.
bool hasSchema(ado::Connection &connection);

} // namespace schema
