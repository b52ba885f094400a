#include "desk/files/NewFile.h"

#include "platform/runtime/RuntimeError.h"

#include <QFileInfo>
#include <QUuid>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#else
#include <io.h>
#endif

namespace files {

namespace {

[[noreturn]] void refuse(const QString &what)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::Database, what);
}

/// A database's log is played into whatever file comes to stand beside it.
void demandFreeName(const QString &target)
{
    if (QFileInfo::exists(target))
        refuse(QStringLiteral("이미 있는 파일이라 만들지 않았습니다: ") + target);
    const QStringList companions = companionsOf(target);
    for (const QString &companion : companions) {
        if (QFileInfo::exists(companion))
            refuse(
                QStringLiteral("다른 데이터베이스의 일부가 그 이름 옆에 남아 있어 만들지 않았습니다. 다른 곳으로 옮긴 "
                               "뒤 다시 시도하십시오: ")
                + companion);
    }
}

} // namespace

QStringList companionsOf(const QString &file)
{
    return {file + QStringLiteral("-wal"), file + QStringLiteral("-shm"), file + QStringLiteral("-journal")};
}

QFile::Permissions privateAs(const QString &source)
{
    return NewFile::Private & QFile::permissions(source);
}

void syncFile(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        refuse(QStringLiteral("파일을 저장하지 못했습니다: %1\n%2").arg(name, file.errorString()));
#ifdef Q_OS_UNIX
    if (::fsync(file.handle()) != 0)
        refuse(QStringLiteral("파일을 저장하지 못했습니다: %1").arg(name));
#else
    file.close();
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly) || ::_commit(file.handle()) != 0)
        refuse(QStringLiteral("파일을 저장하지 못했습니다: %1").arg(name));
#endif
}

void syncFolderOf(const QString &file)
{
#ifdef Q_OS_UNIX
    // A folder that does not take it, on a stick for example, is not the file's fault.
    const int folder = ::open(QFile::encodeName(QFileInfo(file).absolutePath()).constData(), O_RDONLY | O_DIRECTORY);
    if (folder < 0)
        return;
    ::fsync(folder);
    ::close(folder);
#else
    Q_UNUSED(file); // there the name is on the disk with the renaming
#endif
}

NewFile::NewFile(const QString &target, QFile::Permissions permissions)
    : target_(target)
    , permissions_(permissions)
{
    demandFreeName(target);
    const QString own = QUuid::createUuid().toString(QUuid::Id128).left(8);
    const QString name = QStringLiteral("%1.%2.part").arg(target, own);
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, permissions | QFile::WriteOwner))
        refuse(QStringLiteral("파일을 만들 수 없습니다: %1\n%2").arg(target, file.errorString()));
    unfinished_ = name;
}

NewFile::~NewFile()
{
    if (unfinished_.isEmpty())
        return;
    QFile::remove(unfinished_);
    const QStringList companions = companionsOf(unfinished_);
    for (const QString &companion : companions)
        QFile::remove(companion);
}

void NewFile::finish(Companions beside)
{
    if (!permissions_.testFlag(QFile::WriteOwner))
        QFile::setPermissions(unfinished_, permissions_);
    // A log that could not be played in when the engine closed the file: without it the file is not whole.
    const QStringList companions = companionsOf(unfinished_);
    for (const QString &companion : companions) {
        if (QFileInfo::exists(companion))
            refuse(QStringLiteral("파일을 끝까지 쓰지 못했습니다. 디스크를 확인한 뒤 다시 시도하십시오: ") + target_);
    }
    syncFile(unfinished_);
    if (beside == Companions::Foreign)
        demandFreeName(target_);
    if (!QFile::rename(unfinished_, target_))
        refuse(QStringLiteral("파일을 만들 수 없습니다: ") + target_);
    unfinished_.clear();
    syncFolderOf(target_);
}

} // namespace files
