#pragma once

#include "platform/ado/Connection.h"
#include "platform/ado/Foresight.h"

#include <QHash>
#include <QStringList>

#include <vector>

namespace clinic {

/// A column as the engine's catalogue has it.
struct FoundColumn
{
    QString name;
    QString type; ///< in the engine's words: "numeric(19,4)", "TEXT"
    bool required = false;
    bool filled = false; ///< a row that leaves it out gets a value all the same
};

struct FoundTable
{
    bool isView = false;
    bool takesWrites = true;
    bool intercepted = false; ///< triggers stand in a view's place
    std::vector<FoundColumn> columns;

    const FoundColumn *column(const QString &name) const; ///< ignores case
};

/// What a database says of the tables of those names.
struct Catalogue
{
    QHash<QString, FoundTable> tables; ///< by name in small letters
    QStringList outOfReach;            ///< as they are written, where only quotes would find them
    bool takesWrites = true;

    const FoundTable *table(const QString &name) const;
};

/// One reading on a server, two of a file.
Catalogue readCatalogue(const ado::Connection &connection, const QStringList &tables);
/// Tells what that reads.
void foreseeCatalogue(ado::Foresight &next, const ado::Connection &connection, const QStringList &tables);

} // namespace clinic
