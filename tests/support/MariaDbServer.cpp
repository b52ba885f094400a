#include "tests/support/MariaDbServer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSettings>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QThread>

#include <csignal>
#include <pwd.h>
#include <stdexcept>
#include <unistd.h>

namespace {

constexpr int mariaDbPatience = 30'000; // milliseconds
constexpr const char *mariaDbProgram = "/usr/sbin/mariadbd";

/// The user that runs the server: it does not run as root.
const passwd *mariaDbUser()
{
    static const passwd user = [] {
        const passwd *const found = getuid() == 0 ? getpwnam("nobody") : getpwuid(getuid());
        if (!found)
            throw std::runtime_error("no user to run the server as");
        return *found;
    }();
    return &user;
}

/// A table is a file of its own there: on a disk the tables of one test take half a second.
QString placeFor(MariaDbServer::Writing writing)
{
    constexpr qint64 room = 400'000'000;
    const QStorageInfo memory(QStringLiteral("/dev/shm"));
    const bool careless = writing == MariaDbServer::Writing::Careless;
    return careless && memory.isReady() && memory.bytesAvailable() > room ? memory.rootPath() : QDir::tempPath();
}

} // namespace

bool MariaDbServer::isInstalled()
{
    const auto isThere = [](const char *program) {
        return !QStandardPaths::findExecutable(QLatin1String(program)).isEmpty();
    };
    const QSettings drivers(QStringLiteral("/etc/odbcinst.ini"), QSettings::IniFormat);
    return isThere(mariaDbProgram) && isThere("mariadb-install-db") && isThere("my_print_defaults")
           && drivers.childGroups().contains(QStringLiteral("MariaDB Unicode"));
}

MariaDbServer &MariaDbServer::instance()
{
    static MariaDbServer server(Writing::Careless);
    return server;
}

MariaDbServer::MariaDbServer(Writing writing)
    : writing_(writing)
    , folder_(placeFor(writing) + QStringLiteral("/clinic-mariadb-XXXXXX"))
{
    if (chown(folder_.path().toUtf8().constData(), mariaDbUser()->pw_uid, mariaDbUser()->pw_gid) != 0)
        throw std::runtime_error("the server's folder cannot be handed over");
    QProcess install;
    install.setProcessChannelMode(QProcess::MergedChannels);
    launch(install, QStringLiteral("mariadb-install-db"),
           {QStringLiteral("--auth-root-authentication-method=normal"), QStringLiteral("--skip-test-db")});
    if (!install.waitForFinished(mariaDbPatience) || install.exitCode() != 0)
        throw std::runtime_error("mariadb-install-db: " + install.readAll().toStdString());
    start();
}

MariaDbServer::~MariaDbServer()
{
    stop();
}

void MariaDbServer::launch(QProcess &process, const QString &name, const QStringList &arguments) const
{
    // As PostgresServer does, and for the same reasons.
    QStringList words{QStringLiteral("--pdeathsig"), QStringLiteral("KILL")};
    if (getuid() == 0)
        words << QStringLiteral("--reuid") << QString::number(mariaDbUser()->pw_uid) << QStringLiteral("--regid")
              << QString::number(mariaDbUser()->pw_gid) << QStringLiteral("--clear-groups");
    process.setWorkingDirectory(folder_.path());
    // A server that starts deletes the temporary tables it finds: in a folder shared with another,
    // those of the other.
    process.start(QStringLiteral("setpriv"), words << name << QStringLiteral("--no-defaults")
                                                   << QStringLiteral("--datadir=") + folder_.filePath("data")
                                                   << QStringLiteral("--tmpdir=") + folder_.path()
                                                   << QStringLiteral("--innodb-log-file-size=16M") << arguments);
}

void MariaDbServer::start()
{
    server_ = std::make_unique<QProcess>();
    server_->setStandardOutputFile(QProcess::nullDevice());
    server_->setStandardErrorFile(folder_.filePath("log"));
    launch(*server_, QLatin1String(mariaDbProgram),
           QStringList{QStringLiteral("--socket=socket"), QStringLiteral("--pid-file=pid"),
                       QStringLiteral("--skip-networking"), QStringLiteral("--lower-case-table-names=1"),
                       QStringLiteral("--max-connections=150"), QStringLiteral("--performance-schema=OFF")}
               + (writing_ == Writing::Careless
                      ? QStringList{QStringLiteral("--innodb-flush-log-at-trx-commit=0"),
                                    QStringLiteral("--innodb-doublewrite=0"),
                                    QStringLiteral("--innodb-flush-method=nosync"),
                                    QStringLiteral("--innodb-file-per-table=0"), QStringLiteral("--debug-no-sync")}
                      : QStringList{QStringLiteral("--innodb-buffer-pool-size=512M")}));
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < mariaDbPatience && server_->state() != QProcess::NotRunning) {
        try {
            ask(QStringLiteral("SELECT 1"));
            return;
        } catch (const std::runtime_error &) {
            QThread::msleep(50);
        }
    }
    throw std::runtime_error("the server does not start");
}

void MariaDbServer::stop()
{
    if (!server_)
        return;
    ::kill(pid_t(server_->processId()), SIGTERM);
    if (!server_->waitForFinished(10'000))
        server_->kill();
    server_.reset();
}

QStringList MariaDbServer::ask(const QString &statement) const
{
    const QString name = QStringLiteral("mariadb-past-all");
    QStringList answers;
    QString failure;
    {
        QSqlDatabase session = QSqlDatabase::addDatabase(QStringLiteral("QODBC"), name);
        session.setDatabaseName(address({}).sliced(qsizetype(sizeof "odbc:") - 1));
        QSqlQuery query;
        if (session.open()) {
            query = QSqlQuery(session);
            if (!query.exec(statement))
                failure = query.lastError().text();
            while (query.next())
                answers << query.value(0).toString();
        } else {
            failure = session.lastError().text();
        }
    }
    QSqlDatabase::removeDatabase(name);
    if (!failure.isEmpty())
        throw std::runtime_error((statement + QStringLiteral(": ") + failure).toStdString());
    return answers;
}

QString MariaDbServer::createDatabase()
{
    const QString name = QStringLiteral("clinic_%1").arg(++databases_);
    ask(QStringLiteral("CREATE DATABASE %1 CHARACTER SET utf8mb4 COLLATE utf8mb4_nopad_bin").arg(name));
    return name;
}

void MariaDbServer::dropDatabase(const QString &name)
{
    cutSessions(name);
    ask(QStringLiteral("DROP DATABASE IF EXISTS ") + name);
}

void MariaDbServer::cutSessions(const QString &database)
{
    const QString sessions =
        QStringLiteral("SELECT id FROM information_schema.processlist WHERE db = '%1'").arg(database);
    for (QStringList ids = ask(sessions); !ids.isEmpty(); ids = ask(sessions)) {
        for (const QString &id : ids) {
            try {
                ask(QStringLiteral("KILL ") + id);
            } catch (const std::runtime_error &) {
                // it went by itself
            }
        }
        QThread::msleep(10);
    }
}

QString MariaDbServer::address(const QString &database) const
{
    return QStringLiteral("odbc:Driver={MariaDB Unicode};Socket=%1;User=root")
               .arg(folder_.filePath(QStringLiteral("data/socket")))
           + (database.isEmpty() ? QString() : QStringLiteral(";Database=") + database);
}
