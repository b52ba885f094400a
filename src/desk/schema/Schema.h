#pragma once

#include "clinic/Catalogue.h"
#include "clinic/Tables.h"
#include "platform/ado/Connection.h"

#include <QStringList>

#include <functional>

/// The clinic's tables as this desk makes them. The sale component has no schema of its own: it relies on these.
namespace schema {

enum class Dialect;
/// An ODBC source stands for the server behind it.
Dialect dialectOf(const ado::Connection &connection);

/// Tables and indexes in an empty database. Raises RuntimeError, and leaves the database as it was, when it refuses,
/// also when the tables exist already.
void createSchema(ado::Connection &connection);

/// Where no rollback undoes a definition, on MariaDB, takes the tables that came since its beginning away again unless they
/// are kept.
class NewTables
{
public:
    explicit NewTables(ado::Connection &connection);
    ~NewTables();
    NewTables(const NewTables &) = delete;
    NewTables &operator=(const NewTables &) = delete;

    void keep() { kept_ = true; }

private:
    ado::Connection &connection_;
    QStringList before_;
    bool kept_ = false;
};

/// The parts of createSchema, for a bulk load that wants its indexes last and its rows in no journal; within the caller's
/// transaction.
void createTables(ado::Connection &connection);
void createIndexes(ado::Connection &connection);
/// `history` writes what an earlier journal held, before this one begins.
/// None on MariaDB: its triggers run with their statement, not at the commit, and one that fails takes the sale along.
void createJournal(ado::Connection &connection, const std::function<void()> &history = {});
bool hasJournal(ado::Connection &connection);
/// After rows were written with keys of their own: new keys go on from the highest. A counter never goes back.
void continueKeys(ado::Connection &connection);
/// What does that, for the tables whose next key is taken already: for all of them, or for those that are asked for.
QStringList lateKeyStatements(ado::Connection &connection,
                              const std::function<bool(const clinic::Table &)> &asked = {});

/// The names in small letters of all tables and views in a database of MariaDB.
QStringList allTables(ado::Connection &connection);
/// What the catalogue has of the tables.
clinic::Catalogue foundTables(const ado::Connection &connection);

/// Whether every table that the desk and the component use is there.
bool hasSchema(ado::Connection &connection);

} // namespace schema
