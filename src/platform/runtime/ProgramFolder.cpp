#include "platform/runtime/ProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace runtime {

namespace {

QString trialFolder;

/// What lies below /usr belongs to the system's packages, also when an administrator is the user.
bool isOfPackages(const QString &folder)
{
    return folder.startsWith(QLatin1String("/usr/")) && !folder.startsWith(QLatin1String("/usr/local/"));
}

/// Tried, since not every system's permissions tell.
bool takesFiles(const QString &folder)
{
    return !isOfPackages(folder) && QTemporaryFile(folder + QStringLiteral("/XXXXXX")).open();
}

QString folderForFiles(const QString &program)
{
    if (takesFiles(program))
        return program;
    const QString own = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir().mkpath(own);
    return own;
}

} // namespace

QString programFolder()
{
    static QString asked, answer; // the same files through the whole run
    const QString program = trialFolder.isEmpty() ? QCoreApplication::applicationDirPath() : trialFolder;
    if (program != asked) {
        answer = folderForFiles(program);
        asked = program;
    }
    return answer.endsWith(QLatin1Char('/')) ? answer : answer + QLatin1Char('/');
}

void setProgramFolder(const QString &folder)
{
    trialFolder = folder;
}

} // namespace runtime
