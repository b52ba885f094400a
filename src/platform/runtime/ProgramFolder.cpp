#include "platform/runtime/ProgramFolder.h"

#include <QCoreApplication>

namespace runtime {

namespace {

QString trialFolder;

} // namespace

QString programFolder()
{
    QString folder = trialFolder.isEmpty() ? QCoreApplication::applicationDirPath() : trialFolder;
    if (!folder.endsWith(QLatin1Char('/')))
        folder += QLatin1Char('/');
    return folder;
}

void setProgramFolder(const QString &folder)
{
    trialFolder = folder;
}

} // namespace runtime
