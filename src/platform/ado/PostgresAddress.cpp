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

} // namespace

PostgresParameters postgresParameters(const QString &address)
{
    const QString place = address.section(u'?', 0, 0);
    const QString server = place.section(u'/', 0, 0);
    const QString user = server.contains(u'@') ? server.section(u'@', 0, -2) : QString();
    static const QRegularExpression hostAndPort(QStringLiteral("^(?:\\[([^]]*)\\]|([^:]*))(?::(\\d+))?"));
    const QRegularExpressionMatch parts = hostAndPort.match(server.section(u'@', -1));
    const std::pair<QString, QString> named[]{
        {QStringLiteral("dbname"), decoded(place.section(u'/', 1))},
        {QStringLiteral("user"), decoded(user.section(u':', 0, 0))},
        {QStringLiteral("password"), decoded(user.section(u':', 1))},
        {QStringLiteral("host"), decoded(parts.captured(1) + parts.captured(2))},
        {QStringLiteral("port"), parts.captured(3)},
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
