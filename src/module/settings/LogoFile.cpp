#include "settings/LogoFile.h"

#include "session/modGlobalVars.h"

#include <QFile>
#include <QImageReader>

QString logoFile()
{
    return gstrAppPath + QLatin1String("RcptLog.dat");
}

QImage readLogo(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QImageReader reader(&file);
    reader.setDecideFormatFromContent(true); // the name tells nothing
    return reader.read();
}
