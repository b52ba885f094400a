#pragma once

#include "platform/ado/Driver.h"
#include "platform/ado/PreparedStatements.h"
#include "platform/ado/SqliteRowLog.h"

struct sqlite3;

namespace ado {

/// The embedded engine, through its own interface: it is the default of a small clinic and must not pay for a value
/// object in every cell. "FILE?mode=ro" is only looked at.
class SqliteDriver : public Driver
{
public:
    SqliteDriver(const QString &file, bool create);
    ~SqliteDriver() override;

    Engine engine() const override { return Engine::SQLite; }
    Dialect dialect() const override { return Dialect::SQLite; }
    void *handle() override { return handle_; }
    Command command() const override { return Command(Command::Values::Marked); }
    Command told(const QString &statement) const override;
    CellTable read(const Command &select) override;
    bool holdMoment() override;
    void letMomentGo() override;
    int write(const Command &statement) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    bool holdsTransaction() const override;
    bool alive(Asking) override { return handle_ != nullptr; }
    std::optional<TableMoment> momentOf(const Table &table) override;
    std::optional<std::vector<std::int64_t>> writtenSince(const TableMoment &moment) override;

protected:
    void openSession() override;
    void closeSession() override;
    /// The engine takes no null handle.
    virtual void requireSession();
    /// Writes go into a log beside the file. Set with the first one: what is only looked at may be no clinic, and stays as
    /// it is.
    virtual void keepLog();

    sqlite3 *handle_ = nullptr; ///< null while there is no session
    PreparedStatements prepared_;

private:
    void run(const char *statement);
    void takeUpLog();
    /// The one number of an answer.
    std::int64_t number(const QString &question);
    /// Whether the engine's own row numbers are the table's keys.
    bool keyIsRowNumber(const Table &table);
    /// Remembers which file and log are this session's.
    void knowFiles();
    /// What the engine said last.
    [[noreturn]] void refuseLast() const;
    /// Ends the session and raises ConnectionLost when the file has another name now or none: nobody would find again what
    /// is written into it.
    void requireFileInPlace();
    /// The engine would read the log that this desk's file had into the one that has its name now. Raises ConnectionLost.
    void requireNoLogOfTheFileBefore() const;
    QString log() const { return file_ + QStringLiteral("-wal"); }

    void open(const QString &name, int how);
    void openToRead();
    /// Raises Database where the file is only to be looked at.
    void requireWriting() const;

    const bool readsOnly_;
    const QString file_;
    bool mayMake_; ///< until it was opened once: a file that is gone must not come back empty
    bool keepsLog_ = false;
    sqlite3_stmt *moment_ = nullptr; ///< a reading that stands still, so that the engine keeps its lock and its moment
    SqliteRowLog rowLog_;            ///< of a session that is this driver's own: a host's may have a watcher already
    QByteArray ownFile_, ownLog_;    ///< identities, of the last session
};

} // namespace ado
