#pragma once

#include <QString>

/// The per-user store of application settings, addressed by application, section and key. Values are text.
namespace registry {

/// The stored text, or the default when nothing is stored.
QString GetSetting(const QString &application, const QString &section, const QString &key,
                   const QString &defaultText = QString());
void SaveSetting(const QString &application, const QString &section, const QString &key, const QString &value);

/// Puts the store into another folder; for tests and trial runs.
void setStoreFolder(const QString &folder);

} // namespace registry
