#pragma once

#include <QString>

/// The per-user store of application settings, addressed by application, section and key. Values are text.
namespace registry {

/// The stored text, or the default when nothing is stored.
QString GetSetting(const QString &application, const QString &section, const QString &key,
                   const QString &defaultText = QString());
/// Stations of one user may write at once: no key of another process is lost. Raises InvalidCall when the store cannot be
/// written.
void SaveSetting(const QString &application, const QString &section, const QString &key, const QString &value);

/// Where the store of an application lies.
QString storeFile(const QString &application);

/// Puts the store into another folder, for tests and trial runs; an empty text brings the user's own back.
void setStoreFolder(const QString &folder);

} // namespace registry
