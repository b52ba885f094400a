#include "desk/schema/WholeFile.h"

#include <QFile>
#include <QScopeGuard>

namespace schema {

bool makeWholeFile(const QString &file, const std::function<void(const QString &unfinished)> &make)
{
    const QString unfinished = file + QStringLiteral(".part");
    const auto discard = [&] {
        for (const char *suffix : {"", "-wal", "-shm", "-journal"})
            QFile::remove(unfinished + QLatin1String(suffix));
    };
    discard(); // of an earlier try that was killed
    const auto leaveNothing = qScopeGuard(discard);
    make(unfinished);
    return QFile::rename(unfinished, file);
}

} // namespace schema
