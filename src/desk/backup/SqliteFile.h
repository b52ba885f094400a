#pragma once

#include "desk/backup/Backup.h"
#include "desk/schema/Version.h"

#include <QStringList>

struct sqlite3;

namespace backup {

/// A database file of the embedded engine, opened past the desks' own layer: that would set its journal mode.
class SqliteFile
{
public:
    enum class Open { ToRead, ToWrite, New };

    SqliteFile(const QString &name, Open how);
    ~SqliteFile();
    SqliteFile(const SqliteFile &) = delete;
    SqliteFile &operator=(const SqliteFile &) = delete;

    /// The first column of every row. Raises RuntimeError.
    QStringList ask(const QString &statement);
    /// Raises RuntimeError unless the file is whole and holds every table of a clinic, one that this program knows.
    void demandClinic();
    schema::Mark mark();
    /// Takes over every page of the other file in one transaction. Desks that write in either meanwhile are waited for.
    void takeOver(SqliteFile &other, const Progress &progress);

private:
    [[noreturn]] void refuseWith(int code) const;

    const QString name_;
    sqlite3 *handle_ = nullptr;
};

} // namespace backup
