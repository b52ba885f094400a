#include "desk/backup/Verify.h"

#include "desk/backup/Backup.h"
#include "desk/backup/Refusal.h"
#include "desk/check/CheckOnTerminal.h"
#include "desk/schema/Statements.h"
#include "desk/terminal/ProgressLine.h"
#include "platform/runtime/Log.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QUuid>

namespace backup {

namespace {

/// Ctrl+C ends the work, not the program: what was made for it has to go again.
int restoreAndCheck(const QString &address, const QString &file)
{
    terminal::ProgressLine line(QStringLiteral("임시로 복원"));
    try {
        restore(address, file, [&](qint64 done, qint64 total) { return line.show(done, total); });
    } catch (const runtime::RuntimeError &) {
        line.leave();
        throw;
    }
    line.leave();
    return check::checkOnTerminal(*ado::Connection::open(address));
}

/// A database beside the clinic's that goes with the object.
class ThrowawayDatabase
{
public:
    explicit ThrowawayDatabase(const QString &address)
        : server_(ado::Connection::open(address))
        , name_(QStringLiteral("clinic_verify_") + QUuid::createUuid().toString(QUuid::Id128).left(8))
    {
        const QVariantList like =
            schema::rowsOf(*server_, QStringLiteral("SELECT pg_encoding_to_char(encoding), datcollate, datctype FROM "
                                                    "pg_database WHERE datname = current_database()"))
                .value(0);
        schema::run(*server_,
                    QStringLiteral("CREATE DATABASE %1 TEMPLATE template0 ENCODING '%2' LC_COLLATE '%3' LC_CTYPE '%4'")
                        .arg(name_, like.value(0).toString(), like.value(1).toString(), like.value(2).toString()));
        static const QRegularExpression nameInAddress(QStringLiteral("^(postgresql://[^?]*/)[^/?]*"));
        address_ = QString(address).replace(nameInAddress, QStringLiteral("\\1") + name_);
    }
    ~ThrowawayDatabase()
    {
        try {
            schema::run(*server_, QStringLiteral("DROP DATABASE %1 WITH (FORCE)").arg(name_));
        } catch (const runtime::RuntimeError &) {
            runtime::trapped();
            // What went before it tells more; the name says what it is.
        }
    }
    ThrowawayDatabase(const ThrowawayDatabase &) = delete;
    ThrowawayDatabase &operator=(const ThrowawayDatabase &) = delete;

    const QString &address() const { return address_; }

private:
    const ado::ConnectionPtr server_;
    const QString name_;
    QString address_;
};

} // namespace

int verifyOnTerminal(const QString &address, const QString &file)
{
    if (!isOfServer(file)) {
        const QTemporaryDir folder; // its owner's only
        return restoreAndCheck(QStringLiteral("sqlite:") + folder.filePath(QStringLiteral("verify.db")), file);
    }
    if (!address.startsWith(QLatin1String("postgresql:")))
        refuse(QStringLiteral("PostgreSQL의 백업입니다. --database에 서버의 postgresql:// 주소를 입력하십시오: ")
               + file);
    const ThrowawayDatabase database(address);
    return restoreAndCheck(database.address(), file);
}

} // namespace backup
