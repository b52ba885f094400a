#include "platform/ado/ShownAddress.h"

#include <QRegularExpression>
#include <QUrl>

#include <algorithm>
#include <iterator>

namespace ado {

namespace {

const QString LeftOut = QStringLiteral("…");

// Neither a ':' nor a '@' nor a '=', which a password could stand behind.
bool isHarmless(const QString &value)
{
    static const QRegularExpression expression(QStringLiteral("^[\\w .,/\\\\~()-]*\\z"),
                                               QRegularExpression::UseUnicodePropertiesOption);
    return expression.match(value).hasMatch();
}

QString percentDecoded(const QString &part)
{
    return QUrl::fromPercentEncoding(part.toUtf8());
}

template <std::size_t Count>
bool isAmong(const QString &name, const char *const (&names)[Count])
{
    return std::ranges::any_of(
        names, [&](const char *known) { return name.compare(QLatin1String(known), Qt::CaseInsensitive) == 0; });
}

/// The pairs of "name=value" that are known to hold no password; LeftOut at the end for the others.
class ShownPairs
{
public:
    template <std::size_t Count>
    void add(const QString &name, const QString &written, const QString &value, const char *const (&known)[Count])
    {
        if (isAmong(name.trimmed(), known) && isHarmless(value))
            shown_ << name + u'=' + written;
        else
            some_ = true;
    }
    QString joined(QChar between) const { return (some_ ? shown_ + QStringList(LeftOut) : shown_).join(between); }

private:
    QStringList shown_;
    bool some_ = false;
};

QRegularExpressionMatch serverParts(const QString &address)
{
    static const QRegularExpression expression(
        QStringLiteral("^postgresql://(?:(?<user>[^:@/?]*)(?::[^/?]*)?@)?"
                       "(?<hosts>(?:\\[[^\\]@/?]*\\]|[^\\]\\[:@/?,]*)(?::\\d*)?(?:,(?:\\[[^\\]@/?]*\\]|[^\\]\\[:@/"
                       "?,]*)(?::\\d*)?)*)"
                       "(?:/(?<name>[^@/?]*))?(?:\\?(?<options>[^@]*))?\\z"),
        QRegularExpression::DotMatchesEverythingOption);
    return expression.match(address);
}

/// The options of a server's address; a name that is percent-encoded is none of the known.
QString optionsToShow(const QString &options)
{
    static constexpr const char *known[]{
        "host", "port", "dbname", "user", "sslmode", "application_name", "connect_timeout", "target_session_attrs"};
    ShownPairs pairs;
    for (const QString &pair : options.split(u'&'))
        pairs.add(pair.section(u'=', 0, 0), pair.section(u'=', 1), percentDecoded(pair.section(u'=', 1)), known);
    return pairs.joined(u'&');
}

QString serverToShow(const QString &address, const QString &unreadable)
{
    const QRegularExpressionMatch parts = serverParts(address);
    const QString user = parts.captured(QStringLiteral("user"));
    const QString hosts = parts.captured(QStringLiteral("hosts"));
    const QString name = parts.captured(QStringLiteral("name"));
    static const QRegularExpression numbers(QStringLiteral("\\[[0-9a-fA-F:.]*(%\\w+)?\\]|:\\d*(?=,|$)"));
    const QString hostNames = QString(hosts).remove(numbers);
    if (!parts.hasMatch() || !isHarmless(percentDecoded(user)) || !isHarmless(percentDecoded(hostNames))
        || !isHarmless(percentDecoded(name)))
        return unreadable;
    QString shown = QStringLiteral("postgresql://") + (user.isEmpty() ? user : user + u'@') + hosts;
    if (parts.hasCaptured(QStringLiteral("name")))
        shown += u'/' + name;
    if (const QString options = parts.captured(QStringLiteral("options")); !options.isEmpty())
        shown += u'?' + optionsToShow(options);
    return shown;
}

/// A connection string: "name=value;name={value}", a '}' in braces doubled.
QString odbcToShow(const QString &source, const QString &unreadable)
{
    static constexpr const char *known[]{"driver", "dsn", "server",   "servername", "host",    "port",    "database",
                                         "db",     "uid", "username", "user",       "user id", "protocol"};
    static const QRegularExpression attribute(QStringLiteral(
        "\\G[\\s;]*(?<name>[^=;{}]+)=\\s*(?<value>\\{(?<braced>(?:[^}]|\\}\\})*)\\}|[^;{}]*)\\s*(?:;|$)"));
    ShownPairs pairs;
    qsizetype end = 0;
    for (auto attributes = attribute.globalMatch(source); attributes.hasNext();) {
        const QRegularExpressionMatch found = attributes.next();
        const QString value = found.captured(QStringLiteral("value"));
        pairs.add(found.captured(QStringLiteral("name")), value,
                  value.startsWith(u'{') ? found.captured(QStringLiteral("braced")) : value, known);
        end = found.capturedEnd();
    }
    if (!QStringView(source).sliced(end).trimmed().isEmpty())
        return unreadable;
    return QStringLiteral("odbc:") + pairs.joined(u';');
}

/// What stands before the first colon, if it may be the kind of an address.
QString kindOfAddress(const QString &address)
{
    static const QRegularExpression kind(QStringLiteral("^[a-z]{2,12}(?=:)"));
    return kind.match(address).captured();
}

} // namespace

bool isWellFormed(const QString &address)
{
    return kindOfAddress(address) != QLatin1String("postgresql") || serverParts(address).hasMatch();
}

QString addressToShow(const QString &address)
{
    const QString kind = kindOfAddress(address);
    const QString unreadable = kind.isEmpty() ? LeftOut : kind + u':' + LeftOut;
    if (kind == QLatin1String("sqlite"))
        return address;
    if (kind == QLatin1String("postgresql"))
        return serverToShow(address, unreadable);
    if (kind == QLatin1String("odbc"))
        return odbcToShow(address.sliced(kind.size() + 1), unreadable);
    return unreadable;
}

} // namespace ado
