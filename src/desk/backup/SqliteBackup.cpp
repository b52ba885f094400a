#include "desk/backup/SqliteBackup.h"

#include "desk/backup/Refusal.h"
#include "desk/backup/SqliteFile.h"

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
    from.ask(QStringLiteral("BEGIN"));
    from.ask(QStringLiteral("SELECT COUNT(*) FROM sqlite_master"));
    to.takeOver(from, progress);
    from.ask(QStringLiteral("COMMIT"));
    // One file that can be carried away, instead of one with a journal beside it.
    to.ask(QStringLiteral("PRAGMA journal_mode = DELETE"));
}

/// A clinic that cannot even be asked is no newer one.
void demandNoNewer(const QString &clinic)
{
    int version = 0;
    try {
        version = SqliteFile(clinic, Open::ToRead).mark().version;
    } catch (const runtime::RuntimeError &) {
        return;
    }
    schema::demandNoNewer(version, clinic);
}

/// A clinic that is too damaged to be copied page by page is kept as it lies there.
void keepAside(const QString &clinic, const QString &safetyCopy)
{
    try {
        copy(clinic, safetyCopy, {});
        return;
    } catch (const runtime::RuntimeError &) {
        QFile::remove(safetyCopy);
    }
    for (const char *suffix : {"", "-wal"}) {
        const QString file = clinic + QLatin1String(suffix);
        if (QFile::exists(file) && !QFile::copy(file, safetyCopy + QLatin1String(suffix)))
            refuse(QStringLiteral("지금의 데이터베이스를 남겨 둘 수 없어 되돌리지 않았습니다: ") + safetyCopy);
    }
}

void makeAnew(const QString &clinic, SqliteFile &from, const Progress &progress)
{
    const QString unfinished = clinic + QStringLiteral(".part");
    QFile::remove(unfinished);
    try {
        SqliteFile(unfinished, Open::New).takeOver(from, progress);
    } catch (...) {
        QFile::remove(unfinished);
        throw;
    }
    if (!QFile::rename(unfinished, clinic))
        refuse(QStringLiteral("데이터베이스 파일을 만들 수 없습니다: ") + clinic);
}

} // namespace

void copySqliteClinic(const QString &clinic, const QString &target, const Progress &progress)
{
    if (!QFileInfo::exists(clinic))
        refuse(QStringLiteral("데이터베이스 파일이 없습니다: ") + clinic);
    copy(clinic, target, progress);
    SqliteFile(target, Open::ToRead).demandClinic();
}

bool restoreSqliteClinic(const QString &clinic, const QString &source, const QString &safetyCopy,
                         const Progress &progress)
{
    if (QFileInfo(clinic).canonicalFilePath() == QFileInfo(source).canonicalFilePath())
        refuse(QStringLiteral("되돌릴 파일이 한의원 데이터베이스 자신입니다: ") + source);
    SqliteFile from(source, Open::ToRead);
    from.demandClinic();
    if (!QFileInfo::exists(clinic)) {
        makeAnew(clinic, from, progress);
        return false;
    }
    demandNoNewer(clinic);
    keepAside(clinic, safetyCopy);
    SqliteFile to(clinic, Open::ToWrite);
    to.takeOver(from, progress);
    return true;
}

} // namespace backup
