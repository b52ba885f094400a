#include "session/ProgramFolder.h"

#include <QCoreApplication>

QString programFolder()
{
    QString folder = QCoreApplication::applicationDirPath();
    if (!folder.endsWith(QLatin1Char('/')))
        folder += QLatin1Char('/');
    return folder;
}
