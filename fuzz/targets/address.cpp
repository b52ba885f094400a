#include "fuzz/Fuzz.h"
#include "platform/ado/Connection.h"
#include "platform/ado/PostgresAddress.h"
#include "platform/ado/ShownAddress.h"
#include "platform/runtime/RuntimeError.h"

#include <QRegularExpression>
#include <QUrl>

namespace {

const QString secret = QStringLiteral("s3cretPw");

/// Taken apart only: nothing is dialled.
void readServerAddress(const QString &address)
{
    for (const auto &[name, value] : ado::postgresParameters(address))
        demand(address.contains(u'?') || !value.isEmpty(), "a part that is not there is not named");
}

/// A password with the secret in its middle is not shown, wherever an address can hold one.
void hidePassword(QByteArray bytes)
{
    QString user = takeText(bytes).remove(QRegularExpression(QStringLiteral("[:@/?]"))).remove(secret);
    QString password = takeText(bytes) + secret + takeText(bytes);
    const QString rest = QString::fromUtf8(bytes).remove(secret);
    const QString encoded = QString::fromLatin1(QUrl::toPercentEncoding(password));
    const QString braced = QString(password).replace(u'}', QStringLiteral("}}"));
    password.remove(QRegularExpression(QStringLiteral("[/?]"))); // these have to be encoded
    for (const QString &address :
         {QStringLiteral("postgresql://%1:%2@").arg(user, password) + rest,
          QStringLiteral("postgresql://%1@server/clinic?password=%2&").arg(user, encoded) + rest,
          QStringLiteral("odbc:Driver=x;UID=%1;PWD={%2};").arg(user.remove(u'{'), braced) + rest})
        demand(!ado::addressToShow(address).contains(secret), "a password is not shown");
}

} // namespace

/// The address itself; then a user, what stands before and after a secret in a password, and the rest.
void fuzz(const QByteArray &given)
{
    const QString address = QString::fromUtf8(given);
    const QString scheme = address.section(u':', 0, 0);
    if (scheme != QLatin1String("postgresql") && scheme != QLatin1String("odbc") && !address.contains(u'/')) {
        // No file of that name is here, so it is refused, and none is made.
        try {
            ado::Connection::open(address);
            demand(address == QLatin1String("sqlite::memory:"), "only what exists is opened");
        } catch (const runtime::RuntimeError &error) {
            demand(!error.description().isEmpty(), "an error tells something");
        }
    }
    if (!address.contains(u'\0'))
        readServerAddress(address);
    hidePassword(given);
}
