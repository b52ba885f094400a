#include "platform/ado/PostgresAddress.h"

#include <QRegularExpression>
#include <QUrl>
#include <QUrlQuery>

#include <libpq-fe.h>

#include <algorithm>
#include <memory>

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

QString lastOf(QLatin1String name, const PostgresParameters &parameters)
{
    const auto found =
        std::find_if(parameters.rbegin(), parameters.rend(), [name](const auto &one) { return one.first == name; });
    return found == parameters.rend() ? QString() : found->second;
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

bool areKnown(const PostgresParameters &parameters)
{
    const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> all(PQconninfoParse("", nullptr),
                                                                           &PQconninfoFree);
    return std::ranges::all_of(parameters, [&](const auto &parameter) {
        const PQconninfoOption *option = all.get();
        while (option && option->keyword && parameter.first != QLatin1String(option->keyword))
            ++option;
        return option && option->keyword;
    });
}

bool lookForWriter(const PostgresParameters &parameters)
{
    const QString wanted = lastOf(QLatin1String("target_session_attrs"), parameters);
    return (wanted == QLatin1String("read-write") || wanted == QLatin1String("primary"))
           && lastOf(QLatin1String("host"), parameters).contains(u',');
}

PostgresParameters beginningAfter(int place, PostgresParameters parameters)
{
    const qsizetype servers = lastOf(QLatin1String("host"), parameters).count(u',') + 1;
    for (auto &[name, value] : parameters) {
        if (name != QLatin1String("host") && name != QLatin1String("hostaddr") && name != QLatin1String("port"))
            continue;
        QStringList each = value.split(u',');
        if (each.size() == servers) // one port may stand for all
            std::rotate(each.begin(), each.begin() + (place + 1) % servers, each.end());
        value = each.join(u',');
    }
    return parameters;
}

int placeOf(const QString &host, const QString &port, const PostgresParameters &parameters)
{
    const QStringList hosts = lastOf(QLatin1String("host"), parameters).split(u',');
    const QStringList ports = lastOf(QLatin1String("port"), parameters).split(u',');
    for (int place = 0; place < hosts.size(); ++place) {
        const QString itsPort = ports.value(ports.size() == 1 ? 0 : place);
        if (hosts[place] == host && (itsPort.isEmpty() || itsPort == port))
            return place;
    }
    return -1;
}

} // namespace ado
