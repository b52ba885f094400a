#pragma once

#include "clinic/Tables.h"

#include <QStringList>

#include <span>

/// Where a chain keeps its one list of products: the head office's own product table, with a revision beside each row that
/// the database itself counts up, and in every clinic a note of which of its products is which of the list's. None of the ten
/// tables is another for it.
namespace clinic {

/// What the head office decides of a product. Key and hiding are each clinic's own.
std::span<const Column> chainColumns();
/// "a.PM_Catagory, a.PM_Name, ...".
QString chainColumnList(const QString &table);

/// Programs that know one of these tables only ask for it by its name in small letters.
inline constexpr const char *chainTables[]{"t_centrallist", "t_centralproduct", "t_centralstate", "t_centrallink"};

// In the database of the head office.
/// `schema` with its dot, that of the product table on a server; `list` tells this list from every other one.
QStringList chainListStatements(const QString &schema, const QString &list);
/// After a restore in another place: what was counted since the backup is lost, and what is counted now says other things.
/// The list stays the same one.
QString chainCountAnewStatement(bool server);
/// Whether two names of lists are those of one, counted anew in between.
bool isSameChainList(const QString &one, const QString &other);
/// What the triggers of a server call; none on the embedded engine.
QStringList chainFunctionStatements();
QStringList chainTriggers(bool server);

// In the database of a clinic.
/// On a server whoever may delete products may write the notes, too.
QStringList chainLinkStatements(bool server);
/// Whether a row of the notes, k, tells another product than one of the product table, p; and what makes it tell that.
QString chainNoteDiffers();
QString chainNoteSettings();

} // namespace clinic
