#include "desk/files/Writable.h"

#include "desk/files/NewFile.h"

#include <QDir>
#include <QFileInfo>

namespace files {

QString troubleWithFolder(const QString &folder)
{
    if (QDir().mkpath(folder) && QFileInfo(folder).isWritable())
        return {};
    return QStringLiteral("폴더에 저장할 수 없습니다. 폴더의 권한을 확인하십시오: ") + folder;
}

QString troubleWithDatabase(const QString &file)
{
    if (!QFileInfo::exists(file))
        return {};
    const QStringList parts = QStringList(file) + companionsOf(file);
    for (const QString &part : parts) {
        if (QFileInfo::exists(part) && !QFileInfo(part).isWritable())
            return QStringLiteral("데이터베이스 파일이 읽기 전용입니다. 파일의 권한을 확인하십시오: ") + part;
    }
    return troubleWithFolder(QFileInfo(file).absolutePath());
}

} // namespace files
