#include "desk/backup/Backup.h"

#include "desk/backup/PostgresBackup.h"
#include "desk/backup/Refusal.h"
#include "desk/backup/SqliteBackup.h"
#include "desk/files/NewFile.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

namespace backup {

namespace {

const QString SqlitePrefix = QStringLiteral("sqlite:");
const QString PostgresPrefix = QStringLiteral("postgresql:");

enum class Kind { Sqlite, Postgres, Unknown };

Kind kindOf(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        refuse(QStringLiteral("백업 파일을 읽을 수 없습니다: %1\n%2").arg(fileName, file.errorString()));
    const QByteArray head = file.read(16);
    if (head == QByteArray("SQLite format 3", 16))
        return Kind::Sqlite;
    return head.startsWith("PGDMP") ? Kind::Postgres : Kind::Unknown;
}

Kind kindOfAddress(const QString &address)
{
    if (address.startsWith(SqlitePrefix))
        return Kind::Sqlite;
    if (address.startsWith(PostgresPrefix))
        return Kind::Postgres;
    refuse(QStringLiteral(
        "ODBC 주소로는 백업하거나 복원할 수 없습니다. PostgreSQL 서버라면 postgresql:// 주소를, 다른 서버라면 그 "
        "서버의 백업 도구를 사용하십시오."));
}

QString sqliteFile(const QString &address)
{
    return address.mid(SqlitePrefix.size());
}

/// Beside the backup: where that lies there is a place for backups.
QString nameOfSafetyCopy(const QString &file)
{
    const QFileInfo backup(file);
    const QString moment = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    const QString name = QStringLiteral("%1-before-restore-%2").arg(backup.completeBaseName(), moment);
    QString free = name;
    for (int number = 2; QFileInfo::exists(backup.dir().filePath(free + QStringLiteral(".backup"))); ++number)
        free = QStringLiteral("%1-%2").arg(name).arg(number);
    return backup.dir().filePath(free + QStringLiteral(".backup"));
}

} // namespace

void backUp(const QString &address, const QString &file, const Progress &progress)
{
    const bool sqlite = kindOfAddress(address) == Kind::Sqlite;
    const QString clinic = sqliteFile(address);
    files::NewFile made(file, sqlite ? files::privateAs(clinic) : files::NewFile::Private);
    if (sqlite)
        copySqliteClinic(clinic, made.unfinished(), progress);
    else
        dumpPostgresClinic(address, made.unfinished(), progress);
    made.finish();
}

bool isOfServer(const QString &file)
{
    return kindOf(file) == Kind::Postgres;
}

Restored restore(const QString &address, const QString &file, const Progress &progress, Scope scope)
{
    const Kind kind = kindOfAddress(address);
    const Kind held = kindOf(file);
    if (held == Kind::Unknown)
        refuse(QStringLiteral("백업 파일이 아닙니다: ") + file);
    if (held != kind)
        refuse(QStringLiteral("%1의 백업이라 이 주소에 복원할 수 없습니다: %2")
                   .arg(held == Kind::Sqlite ? QStringLiteral("SQLite") : QStringLiteral("PostgreSQL"), file));
    const QString safetyCopy = nameOfSafetyCopy(file);
    return kind == Kind::Sqlite ? restoreSqliteClinic(sqliteFile(address), file, safetyCopy, scope, progress)
                                : restorePostgresClinic(address, file, safetyCopy, scope, progress);
}

} // namespace backup
