#include "platform/registry/AppSettings.h"

#include "platform/runtime/RuntimeError.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

namespace registry {

namespace {

QString &otherFolder()
{
    static QString folder;
    return folder;
}

/// Section and key as one name; a slash inside either must not open a group of its own.
QString nameOf(const QString &section, const QString &key)
{
    const auto escaped = [](QString part) {
        return part.replace(QLatin1Char('%'), QLatin1String("%25"))
            .replace(QLatin1Char('/'), QLatin1String("%2F"))
            .replace(QLatin1Char('\\'), QLatin1String("%5C"));
    };
    return escaped(section) + QLatin1Char('/') + escaped(key);
}

} // namespace

QString storeFile(const QString &application)
{
    const QString folder = otherFolder().isEmpty()
                               ? QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
                               : otherFolder();
    return QDir(folder).filePath(application + QStringLiteral(".ini"));
}

QString GetSetting(const QString &application, const QString &section, const QString &key, const QString &defaultText)
{
    const QSettings settings(storeFile(application), QSettings::IniFormat);
    return settings.value(nameOf(section, key), defaultText).toString();
}

void SaveSetting(const QString &application, const QString &section, const QString &key, const QString &value)
{
    // QSettings writes under a lock and keeps what another process of this user has written meanwhile.
    QSettings settings(storeFile(application), QSettings::IniFormat);
    settings.setValue(nameOf(section, key), value);
    settings.sync();
    if (settings.status() != QSettings::NoError)
        throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall,
                                    QStringLiteral("설정을 저장하지 못했습니다: %1").arg(settings.fileName()));
}

void setStoreFolder(const QString &folder)
{
    otherFolder() = folder;
}

} // namespace registry
