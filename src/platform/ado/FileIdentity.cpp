#include "platform/ado/FileIdentity.h"

#ifdef Q_OS_UNIX
#include <QFile>

#include <sys/stat.h>
#endif

namespace ado {

QByteArray identityOf(const QString &file)
{
#ifdef Q_OS_UNIX
    struct stat found
    {
    };
    if (::stat(QFile::encodeName(file).constData(), &found) == 0)
        return QByteArray::number(quint64{found.st_dev}) + ' ' + QByteArray::number(quint64{found.st_ino});
#else
    Q_UNUSED(file);
#endif
    return {};
}

} // namespace ado
