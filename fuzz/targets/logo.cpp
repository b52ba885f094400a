#include "fuzz/Fuzz.h"
#include "settings/LogoFile.h"

#include <QFile>

// A file of any content is a picture or none.
void fuzz(const QByteArray &bytes)
{
    const QString file = QStringLiteral("logo.dat");
    QFile stored(file);
    demand(stored.open(QIODevice::WriteOnly) && stored.write(bytes) == bytes.size(), "the file is written");
    stored.close();
    const QImage logo = readLogo(file);
    demand(logo.isNull() || (logo.width() > 0 && logo.height() > 0), "a picture has a size");
    if (!logo.isNull())
        demand(!logo.scaled(QSize(360, 120), Qt::KeepAspectRatio, Qt::SmoothTransformation).isNull(),
               "it can be shown small");
}
