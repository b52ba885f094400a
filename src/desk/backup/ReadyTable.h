#pragma once

#include "desk/backup/Backup.h"
#include "platform/ado/Connection.h"

#include <QStringList>

#include <vector>

namespace backup {

/// A table of the clinic, and the rows that it is to have, which lie ready beside it under another name.
struct ReadyTable
{
    QString name;
    QString ready;
    QString key;        ///< empty where a row has none
    QStringList ours;   ///< the columns of both that are known, as they stand in a statement
    QStringList theirs; ///< another program's that both have
};

/// As it stands in a statement, whatever it is.
QString quotedName(QString name);

/// The tables that come back, those that others refer to first.
std::vector<const char *> tablesOf(Scope scope);
/// Raises RuntimeError that names them, unless there are none.
void demandTables(const QStringList &missing);
/// Of columns that the clinic has and of those that the backup has, by name. Raises RuntimeError where the clinic lacks one.
ReadyTable readyTable(const QString &name, const QString &ready, const QStringList &here, const QStringList &kept);

/// Within a transaction: makes the rows of the tables those that lie ready. A row that is the same in both is not touched,
/// so that the journal, and triggers of other programs, tell what the restore changed. Raises RuntimeError that names the
/// table where a row is refused, or where another program's table refers to one that would go.
void replaceRows(ado::Connection &clinic, const std::vector<ReadyTable> &tables, const Progress &progress);

/// Within the same: counts the restore, so that open windows read anew, and notes it in the journal under the file's name.
void noteRestore(ado::Connection &clinic, const QString &file);

} // namespace backup
