#include "platform/ado/PostgresAddress.h"

#include <QRegularExpression>
#include <QUrl>
#include <QUrlQuery>

namespace ado {

namespace {

QString decoded(const QString &part)
{
    return QUrl::fromPercentEncoding(part.toUtf8());
}

/// As the library takes lists: a port for each host, an empty one for the usual.
struct Servers
{
    QStringList hosts;
    QStringList ports;

    QString portList() const { return ports.join(QString()).isEmpty() ? QString() : ports.join(u','); }
};

Servers serversIn(const QString &list)
{
    static const QRegularExpression hostAndPort(QStringLiteral("^(?:\\[([^]]*)\\]|([^:]*))(?::(\\d+))?"));
    Servers servers;
    for (const QString &server : list.split(u',')) {
        const QRegularExpressionMatch parts = hostAndPort.match(server.trimmed());
        servers.hosts << decoded(parts.captured(1) + parts.captured(2));
        servers.ports << parts.captured(3);
    }
    return servers;
}

} // namespace

PostgresParameters postgresParameters(const QString &address)
{
    const QString place = address.section(u'?', 0, 0);
    const QString server = place.section(u'/', 0, 0);
    const QString user = server.contains(u'@') ? server.section(u'@', 0, -2) : QString();
    const Servers servers = serversIn(server.section(u'@', -1));
    const std::pair<QString, QString> named[]{
        {QStringLiteral("dbname"), decoded(place.section(u'/', 1))},
        {QStringLiteral("user"), decoded(user.section(u':', 0, 0))},
        {QStringLiteral("password"), decoded(user.section(u':', 1))},
        {QStringLiteral("host"), servers.hosts.join(u',')},
        {QStringLiteral("port"), servers.portList()},
    };
    PostgresParameters parameters;
    for (const auto &parameter : named) {
        if (!parameter.second.isEmpty())
            parameters << parameter;
    }
    for (const auto &option : QUrlQuery(address.section(u'?', 1)).queryItems(QUrl::FullyDecoded))
        parameters << std::pair(option.first, option.second);
    return parameters;
}

} // namespace ado
