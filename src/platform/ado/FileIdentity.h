#pragma once

#include <QByteArray>
#include <QString>

namespace ado {

/// What a file is whatever its name; empty when there is none. Empty always on a system where a file that somebody has open
/// keeps its name.
QByteArray identityOf(const QString &file);

} // namespace ado
