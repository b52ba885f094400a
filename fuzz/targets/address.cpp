#include "fuzz/Fuzz.h"
#include "host/schema/Address.h"
#include "platform/ado/Connection.h"
#include "platform/ado/PostgresDriver.h"
#include "platform/runtime/RuntimeError.h"

#include <QRegularExpression>

namespace {

const QString secret = QStringLiteral("s3cretPw");

/// Taken apart only: nothing is dialled.
void readServerAddress(const QString &address)
{
    const ado::PostgresDriver driver(address);
    const QSqlDatabase &database = driver.database();
    demand(!database.isOpen(), "nothing was opened");
    demand(!database.hostName().contains(secret) || address.contains(secret), "parts come from the address");
}

} // namespace

/// User, host and the rest of an address.
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

    QByteArray bytes = given;
    QString user = takeText(bytes).remove(QRegularExpression(QStringLiteral("[:@/?]")));
    const QString rest = QString::fromUtf8(bytes).remove(secret);
    user.remove(secret);
    const QString shown = schema::addressToShow(QStringLiteral("postgresql://%1:%2@%3").arg(user, secret, rest));
    demand(!shown.contains(secret), "a password is not shown");
}
