#pragma once

#include "desk/backup/Backup.h"
#include "desk/schema/Version.h"
#include "platform/runtime/RuntimeError.h"

#include <QElapsedTimer>
#include <QHash>
#include <QStringList>

struct sqlite3;
struct sqlite3_stmt;

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

    /// Whether an error that one of these raised is for what the file holds, and not for a disk that could not be read.
    static bool tellsOfDamage(const runtime::RuntimeError &error);

    /// The first column of every row. Raises RuntimeError.
    QStringList ask(const QString &statement);
    /// Raises RuntimeError unless the file is whole and holds every table of a clinic, one that this program knows; it is told
    /// under the other name when there is one.
    void demandClinic(const QString &toldAs = {});
    /// Whether the engine can read and write all of it; a row that breaks a rule of its table is no damage.
    bool isSound();
    QStringList missingTables();
    /// One text a table that only the same rows give.
    QStringList rowSums();
    /// Lets the file carry them, as demandClinic looks for them.
    void carry(const QStringList &rowSums);
    schema::Mark mark();
    /// Their statements.
    QStringList triggers();
    /// The highest key that each table gave, by table.
    QHash<QString, qint64> counters();
    /// Never back.
    void countForward(const QHash<QString, qint64> &counters);
    /// Takes over every page of the other file in one transaction. Desks that write in either meanwhile are waited for.
    /// With `lastWords` this is a clinic: it is called once nobody can write here any more and nothing is taken over yet (the
    /// other file may still be changed by it), and what is committed then is not called stopped.
    void takeOver(SqliteFile &other, const Progress &progress, const std::function<void()> &lastWords = {});

private:
    /// Why the file is no clinic of this system; empty when it is one.
    QString whyForeign();
    bool has(const QString &table);
    void forEachRow(const QString &statement, const std::function<void(sqlite3_stmt *)> &take);
    [[noreturn]] void refuseWith(int code) const;
    /// Whether it must be tried again. Raises RuntimeError when that has gone on for too long.
    bool waitForDesks(int code, QElapsedTimer &waiting) const;

    const QString name_;
    sqlite3 *handle_ = nullptr;
};

} // namespace backup
