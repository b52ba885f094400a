#include "platform/ado/MariaDbSession.h"

#include <QVersionNumber>

namespace ado {

namespace {

/// After so long a server that says nothing counts as gone: the driver knows no other sign of life than the answer.
constexpr const char *timeouts[][2]{{"READ_TIMEOUT=", "60"}, {"WRITE_TIMEOUT=", "60"}};

// Behind all others, where they hold. 2: an update tells the rows that it found, also those that it left as they were. With
// other numbers the driver takes several statements at once, or opens another session unseen, in which nothing of ours is
// set.
const QString keptWords = QStringLiteral(";CHARSET=utf8mb4;OPTION=2");

} // namespace

QString mariaDbSession::completed(const QString &connectionString)
{
    if (connectionString.endsWith(keptWords))
        return connectionString;
    QString completed = connectionString;
    for (const auto &[name, seconds] : timeouts) {
        if (!connectionString.contains(QLatin1String(name), Qt::CaseInsensitive))
            completed += u';' + QLatin1String(name) + QLatin1String(seconds);
    }
    return completed + keptWords;
}

bool mariaDbSession::isNewEnough(const QString &version)
{
    return QVersionNumber::fromString(version) >= QVersionNumber(10, 6);
}

} // namespace ado
