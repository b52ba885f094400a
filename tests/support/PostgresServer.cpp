#include "tests/support/PostgresServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QThread>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <pwd.h>
#include <stdexcept>
#include <unistd.h>

namespace {

/// Folder of the newest installed server's programs; empty when they are on the search path.
QString binaries()
{
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    QStringList names = versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    std::sort(names.begin(), names.end(), [](const QString &a, const QString &b) { return a.toInt() < b.toInt(); });
    return names.isEmpty() ? QString() : versions.filePath(names.last() + QStringLiteral("/bin/"));
}

constexpr int startTimeout = 30'000; // milliseconds

/// The user that runs the server: the server refuses root. A copy, for the next question overwrites the answer.
const passwd *serverUser()
{
    static const passwd user = [] {
        const passwd *const found = getuid() == 0 ? getpwnam("postgres") : getpwuid(getuid());
        if (!found)
            throw std::runtime_error("no user to run the server as");
        passwd kept = *found;
        kept.pw_name = strdup(found->pw_name);
        return kept;
    }();
    return &user;
}

} // namespace

PostgresServer &PostgresServer::instance()
{
    static PostgresServer server(Writing::Careless);
    return server;
}

PostgresServer::PostgresServer(Writing writing)
    : writing_(writing)
    , folder_(QDir::tempPath() + QStringLiteral("/clinic-server-XXXXXX"))
{
    if (chown(folder_.path().toUtf8().constData(), serverUser()->pw_uid, serverUser()->pw_gid) != 0)
        throw std::runtime_error("the server's folder cannot be handed over");
    initialise();
    start();
}

PostgresServer::~PostgresServer()
{
    stop();
}

void PostgresServer::launch(QProcess &process, const QString &program, const QStringList &arguments) const
{
    // Through setpriv, not a child modifier: a child that shares this program's memory must not change users in it.
    // A test program that dies takes its server along.
    QStringList words{QStringLiteral("--pdeathsig"), QStringLiteral("QUIT")};
    if (getuid() == 0)
        words << QStringLiteral("--reuid") << QString::fromLocal8Bit(serverUser()->pw_name) << QStringLiteral("--regid")
              << QString::number(serverUser()->pw_gid) << QStringLiteral("--init-groups");
    process.setWorkingDirectory(folder_.path());
    process.start(QStringLiteral("setpriv"), words << binaries() + program << arguments);
}

void PostgresServer::initialise()
{
    QProcess initdb;
    initdb.setProcessChannelMode(QProcess::MergedChannels);
    launch(initdb, QStringLiteral("initdb"),
           {QStringLiteral("-D"), QStringLiteral("data"), QStringLiteral("-U"), QStringLiteral("clinic"),
            QStringLiteral("-A"), QStringLiteral("trust"), QStringLiteral("-E"), QStringLiteral("UTF8"),
            QStringLiteral("--locale=C.UTF-8"), QStringLiteral("--no-sync")});
    if (!initdb.waitForFinished(startTimeout) || initdb.exitCode() != 0)
        throw std::runtime_error("initdb: " + initdb.readAll().toStdString());

    // One role has to give its password.
    QFile access(folder_.filePath("data/pg_hba.conf"));
    if (!access.open(QIODevice::ReadWrite))
        throw std::runtime_error("pg_hba.conf: " + access.errorString().toStdString());
    const QByteArray rest = access.readAll();
    access.seek(0);
    access.write("local all guarded scram-sha-256\n" + rest);
}

void PostgresServer::start()
{
    server_ = std::make_unique<QProcess>();
    server_->setProcessChannelMode(QProcess::MergedChannels);
    server_->setStandardOutputFile(folder_.filePath("log"), QIODevice::Append); // why it does not start
    QStringList arguments{QStringLiteral("-D"), QStringLiteral("data"), QStringLiteral("-k"), folder_.path()};
    QStringList settings{QStringLiteral("listen_addresses="), QStringLiteral("max_connections=150")};
    if (writing_ == Writing::Careless)
        settings << QStringLiteral("fsync=off") << QStringLiteral("full_page_writes=off")
                 << QStringLiteral("synchronous_commit=off");
    for (const QString &setting : settings)
        arguments << QStringLiteral("-c") << setting;
    launch(*server_, QStringLiteral("postgres"), arguments);

    QElapsedTimer waited;
    waited.start();
    QProcess ready;
    do {
        ready.start(binaries() + QStringLiteral("pg_isready"),
                    {QStringLiteral("-q"), QStringLiteral("-h"), folder_.path()});
        ready.waitForFinished(startTimeout);
        if (ready.exitCode() == 0)
            return;
        QThread::msleep(50);
    } while (waited.elapsed() < startTimeout && server_->state() != QProcess::NotRunning);
    throw std::runtime_error("the server does not start");
}

void PostgresServer::stop()
{
    if (!server_)
        return;
    ::kill(pid_t(server_->processId()), SIGINT); // fast shutdown; QProcess::terminate would wait for the sessions
    if (!server_->waitForFinished(10'000))
        server_->kill();
    server_.reset();
}

void PostgresServer::sql(const QString &statement)
{
    QProcess psql;
    psql.setProcessChannelMode(QProcess::MergedChannels);
    psql.start(binaries() + QStringLiteral("psql"),
               {QStringLiteral("-h"), folder_.path(), QStringLiteral("-U"), QStringLiteral("clinic"),
                QStringLiteral("-d"), QStringLiteral("postgres"), QStringLiteral("-q"), QStringLiteral("-v"),
                QStringLiteral("ON_ERROR_STOP=1"), QStringLiteral("-c"), statement});
    if (!psql.waitForFinished(startTimeout) || psql.exitCode() != 0)
        throw std::runtime_error(statement.toStdString() + ": " + psql.readAll().toStdString());
}

QString PostgresServer::createDatabase()
{
    const QString name = QStringLiteral("clinic_%1").arg(++databases_);
    sql(QStringLiteral("CREATE DATABASE %1 TEMPLATE template0").arg(name));
    return name;
}

void PostgresServer::dropDatabase(const QString &name)
{
    sql(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(name));
}

void PostgresServer::cutSessions(const QString &database)
{
    sql(QStringLiteral("SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE datname = '%1'")
            .arg(database));
}

QString PostgresServer::postgresAddress(const QString &database) const
{
    return QStringLiteral("postgresql://clinic@/%1?host=%2").arg(database, folder_.path());
}

QString PostgresServer::odbcAddress(const QString &database) const
{
    return QStringLiteral("odbc:Driver={PostgreSQL Unicode};Servername=%2;Database=%1;Username=clinic;Protocol=7.4-2;"
                          "BoolsAsChar=0;MaxVarcharSize=4000")
        .arg(database, folder_.path());
}
