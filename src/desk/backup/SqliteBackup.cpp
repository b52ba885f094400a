#include "desk/backup/SqliteBackup.h"

#include "clinic/ChainTables.h"
#include "desk/backup/CalmMoment.h"
#include "desk/backup/ReadyTable.h"
#include "desk/backup/Refusal.h"
#include "desk/backup/SqliteFile.h"
#include "desk/backup/SqliteRows.h"
#include "desk/files/NewFile.h"
#include "desk/schema/Journal.h"
#include "desk/schema/Upgrade.h"
#include "platform/runtime/Log.h"

#include <QFile>
#include <QFileInfo>

namespace backup {

namespace {

using Open = SqliteFile::Open;

/// Copies the clinic as it is when the copying begins, whatever the desks write meanwhile.
void copy(const QString &clinic, const QString &target, const Progress &progress)
{
    SqliteFile from(clinic, Open::ToWrite);
    SqliteFile to(target, Open::New);
    // Without a reading of its own the copying would begin anew after every write of a desk.
    const QString unfinished = unfinishedOrdersStatement();
    from.ask(QStringLiteral("BEGIN"));
    waitForCalm([&] {
        from.ask(QStringLiteral("COMMIT"));
        from.ask(QStringLiteral("BEGIN"));
        return from.ask(unfinished);
    });
    to.takeOver(from, progress);
    const QStringList rowSums = from.rowSums();
    from.ask(QStringLiteral("COMMIT"));
    to.carry(rowSums);
    // One file that can be carried away, instead of one with a journal beside it.
    to.ask(QStringLiteral("PRAGMA journal_mode = DELETE"));
}

/// A clinic that cannot even be asked is no newer one.
void demandNoNewer(const QString &clinic)
{
    int version = 0;
    try {
        version = SqliteFile(clinic, Open::ToRead).mark().version;
    } catch (const runtime::RuntimeError &error) {
        if (!SqliteFile::tellsOfDamage(error))
            throw;
        runtime::trapped();
        return;
    }
    schema::demandNoNewer(version, clinic);
}

/// A trigger that a foreign hand left in a backup would run with the desks' own statements.
void demandKnownTriggers(SqliteFile &backup, const QString &source)
{
    QStringList unknown = backup.triggers();
    for (const schema::JournalTrigger &trigger : schema::journalTriggers(schema::Dialect::SQLite))
        unknown.removeAll(trigger.statement);
    for (const QString &trigger : clinic::chainTriggers(false))
        unknown.removeAll(trigger);
    if (!unknown.isEmpty())
        refuse(QStringLiteral("백업에 다른 프로그램의 트리거가 있어 새 데이터베이스로 복원하지 않았습니다: %1\n%2")
                   .arg(source, unknown.join(u'\n')));
}

/// What lies at the address of a clinic.
enum class Found { Clinic, Nothing, Damaged };

Found lookOnce(const QString &clinic)
{
    try {
        SqliteFile file(clinic, Open::ToRead);
        if (!file.isSound())
            return Found::Damaged;
        if (file.ask(QStringLiteral("SELECT name FROM sqlite_master")).isEmpty())
            return Found::Nothing;
        demandTables(file.missingTables());
        return Found::Clinic;
    } catch (const runtime::RuntimeError &error) {
        if (!SqliteFile::tellsOfDamage(error))
            throw;
        runtime::trapped();
        return Found::Damaged;
    }
}

/// A disk that could not be read once is no damaged file, and what is taken for one is replaced as a whole. Raises RuntimeError
/// for a database of another program.
Found look(const QString &clinic)
{
    const Found found = lookOnce(clinic);
    return found == Found::Damaged ? lookOnce(clinic) : found;
}

void copyBytes(const QString &from, const QString &to)
{
    QFile source(from), target(to);
    bool fine = source.open(QIODevice::ReadOnly) && target.open(QIODevice::WriteOnly);
    while (fine && !source.atEnd()) {
        const QByteArray piece = source.read(1 << 20);
        fine = !piece.isEmpty() && target.write(piece) == piece.size();
    }
    if (!fine || !target.flush())
        refuse(QStringLiteral("지금의 데이터베이스를 남겨 둘 수 없어 복원하지 않았습니다: ") + from);
}

/// A clinic that is too damaged to be copied page by page is kept as it lies there, with the log that belongs to it.
void keepAside(const QString &clinic, const QString &safetyCopy)
{
    const QFile::Permissions permissions = files::privateAs(clinic);
    try {
        files::NewFile kept(safetyCopy, permissions);
        copy(clinic, kept.unfinished(), {});
        return kept.finish();
    } catch (const runtime::RuntimeError &) {
        if (QFileInfo::exists(safetyCopy))
            throw;
        runtime::trapped();
    }
    const QString log = QStringLiteral("-wal");
    files::NewFile kept(safetyCopy, permissions);
    copyBytes(clinic, kept.unfinished());
    if (QFileInfo::exists(clinic + log)) {
        files::NewFile keptLog(safetyCopy + log, permissions);
        copyBytes(clinic + log, keptLog.unfinished());
        keptLog.finish();
    }
    kept.finish(files::NewFile::Companions::Mine);
}

/// A copy of the backup that has all that a clinic of this program has. The backup itself stays as it is.
void prepare(SqliteFile &backup, const QString &copy, const Progress &progress)
{
    {
        SqliteFile file(copy, Open::New);
        file.takeOver(backup, progress);
        file.ask(QStringLiteral("DROP TABLE IF EXISTS t_DeskBackup"));
    }
    try {
        schema::upgrade(*ado::Connection::open(QStringLiteral("sqlite:") + copy));
    } catch (const runtime::RuntimeError &) {
        runtime::trapped();
        // Rows stand in the way. They are wanted back all the same, and the desk says that an upgrade is due.
        SqliteFile file(copy, Open::ToWrite);
        for (const QString &statement : schema::markStatements(schema::Dialect::SQLite))
            file.ask(statement);
        file.ask(QStringLiteral("UPDATE t_DeskSchema SET DS_Version = %1").arg(backup.mark().version));
    }
    SqliteFile file(copy, Open::ToWrite);
    file.ask(QStringLiteral("UPDATE t_DeskSchema SET DS_Generation = DS_Generation + 1"));
    if (!file.ask(QStringLiteral("SELECT 1 FROM sqlite_master WHERE name = 't_CentralList'")).isEmpty())
        file.ask(clinic::chainCountAnewStatement(false));
}

/// What a clinic must not fall behind with when others rows come into it. One that is too damaged to be asked tells
/// nothing.
void takeAlong(const QString &clinic, SqliteFile &prepared)
{
    try {
        SqliteFile asItStands(clinic, Open::ToRead);
        prepared.countForward(asItStands.counters());
        prepared.ask(QStringLiteral("UPDATE t_DeskSchema SET DS_Generation = MAX(DS_Generation, %1)")
                         .arg(asItStands.mark().generation + 1));
    } catch (const runtime::RuntimeError &error) {
        if (!SqliteFile::tellsOfDamage(error))
            throw;
        runtime::trapped();
    }
}

/// All of it, for it holds nothing that rows could be put into.
void replaceFile(const QString &clinic, const QString &prepared, const Progress &progress)
{
    SqliteFile to(clinic, Open::ToWrite);
    SqliteFile ready(prepared, Open::ToWrite);
    try {
        to.ask(QStringLiteral("PRAGMA journal_mode = WAL")); // as every desk has it: it can be asked while it is held
    } catch (const runtime::RuntimeError &) {
        runtime::trapped();
    }
    to.takeOver(ready, progress, [&] { takeAlong(clinic, ready); });
}

/// A commit that a disk could not sync at its very end may stand all the same. What the file says then is what happened, once it
/// can be synced.
void putRows(const QString &clinic, const QString &source, Scope scope, const Progress &progress)
{
    const auto generation = [&] { return SqliteFile(clinic, Open::ToRead).mark().generation; };
    const int before = generation();
    try {
        replaceSqliteRows(clinic, source, scope, progress);
    } catch (const runtime::RuntimeError &) {
        if (generation() <= before)
            throw;
        runtime::trapped();
        files::syncFile(clinic);
        if (const QString log = clinic + QStringLiteral("-wal"); QFileInfo::exists(log))
            files::syncFile(log);
    }
}

} // namespace

void copySqliteClinic(const QString &clinic, const QString &target, const Progress &progress)
{
    if (!QFileInfo::exists(clinic))
        refuse(QStringLiteral("데이터베이스 파일이 없습니다: ") + clinic);
    copy(clinic, target, progress);
    SqliteFile(target, Open::ToRead).demandClinic(clinic);
}

Restored restoreSqliteClinic(const QString &clinic, const QString &source, const QString &safetyCopy, Scope scope,
                             const Progress &progress)
{
    if (QFileInfo(clinic).canonicalFilePath() == QFileInfo(source).canonicalFilePath())
        refuse(QStringLiteral("현재 데이터베이스 파일입니다. 백업 파일을 지정하십시오: ") + source);
    SqliteFile from(source, Open::ToRead);
    from.demandClinic();
    if (!QFileInfo::exists(clinic)) {
        demandKnownTriggers(from, source);
        files::NewFile made(clinic, files::NewFile::Private);
        prepare(from, made.unfinished(), progress);
        made.finish();
        return {};
    }
    demandNoNewer(clinic);
    const Found found = look(clinic);
    if (found == Found::Clinic) {
        keepAside(clinic, safetyCopy);
        putRows(clinic, source, scope, progress);
        return {safetyCopy};
    }
    demandKnownTriggers(from, source);
    const files::NewFile prepared(clinic + QStringLiteral(".restore"), files::NewFile::Private);
    prepare(from, prepared.unfinished(), {});
    if (found == Found::Damaged)
        keepAside(clinic, safetyCopy);
    replaceFile(clinic, prepared.unfinished(), progress);
    return found == Found::Damaged ? Restored{safetyCopy, true} : Restored{};
}

} // namespace backup
