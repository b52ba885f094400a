#include "trials/failover/Server.h"

#include "trials/failover/Site.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <csignal>
#include <stdexcept>
#include <utility>

namespace trial {

namespace {

QString programs()
{
    const QStringList versions =
        QDir(QStringLiteral("/usr/lib/postgresql")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    if (versions.isEmpty())
        throw std::runtime_error("PostgreSQL is not installed");
    return QStringLiteral("/usr/lib/postgresql/%1/bin/").arg(versions.last());
}

void append(const QString &file, const QByteArray &text)
{
    QFile opened(file);
    if (!opened.open(QIODevice::Append) || opened.write(text) != text.size())
        throw std::runtime_error(opened.errorString().toStdString());
}

QList<pid_t> childrenOf(qint64 parent)
{
    QList<pid_t> children;
    QFile list(QStringLiteral("/proc/%1/task/%1/children").arg(parent));
    if (list.open(QIODevice::ReadOnly)) {
        for (const QByteArray &child : list.readAll().split(' '))
            if (child.toInt() > 0)
                children << child.toInt();
    }
    return children;
}

} // namespace

Server::Server(QString folder, QString host, QStringList way)
    : folder_(std::move(folder))
    , host_(std::move(host))
    , way_(std::move(way))
{
    run({QStringLiteral("install"), QStringLiteral("-d"), QStringLiteral("-o"), QStringLiteral("postgres"), folder_});
}

Server::~Server()
{
    kill();
}

QStringList Server::asUser(const QString &program) const
{
    return way_ + QStringLiteral("setpriv --pdeathsig KILL --reuid postgres --regid postgres --init-groups").split(u' ')
           + QStringList{programs() + program};
}

void Server::initialise()
{
    run(asUser(QStringLiteral("initdb"))
        + QStringLiteral("-U clinic -A trust -E UTF8 --locale=C.UTF-8 --wal-segsize=1 --no-sync -D").split(u' ')
        + QStringList{data()});
    append(data() + QStringLiteral("/pg_hba.conf"),
           "host all all 10.213.7.0/24 trust\nhost replication all 10.213.7.0/24 trust\n");
    append(data() + QStringLiteral("/postgresql.conf"),
           "min_wal_size = 2MB\nmax_wal_size = 32MB\nwal_log_hints = on\n");
}

void Server::copyFrom(const Server &other)
{
    run({QStringLiteral("cp"), QStringLiteral("-a"), other.data(), data()});
}

void Server::follow(const Server &first)
{
    append(data() + QStringLiteral("/postgresql.conf"),
           "primary_conninfo = 'host=" + first.host().toLatin1() + " user=clinic application_name=second'\n");
    append(data() + QStringLiteral("/standby.signal"), {});
}

void Server::start(const QStringList &settings)
{
    QStringList words =
        asUser(QStringLiteral("postgres")) + QStringList{QStringLiteral("-D"), data(), QStringLiteral("-k"), folder_};
    for (const QString &setting : QStringList{QStringLiteral("listen_addresses=") + host_} + settings)
        words << QStringLiteral("-c") << setting;
    server_ = std::make_unique<QProcess>();
    server_->setProcessChannelMode(QProcess::MergedChannels);
    server_->setStandardOutputFile(folder_ + QStringLiteral("/log"), QIODevice::Append);
    server_->start(words.first(), words.mid(1));
    awaitAnswer();
}

void Server::awaitAnswer()
{
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < 30'000) {
        if (server_->waitForFinished(30))
            break;
        QProcess ready;
        ready.start(programs() + QStringLiteral("pg_isready"), {QStringLiteral("-q"), QStringLiteral("-h"), host_});
        if (ready.waitForFinished() && ready.exitCode() == 0)
            return;
    }
    throw std::runtime_error("a server does not start; its log is in " + folder_.toStdString());
}

void Server::stop()
{
    ::kill(pid_t(server_->processId()), SIGINT);
    if (!server_->waitForFinished(30'000))
        throw std::runtime_error("a server does not stop");
    server_.reset();
}

void Server::kill()
{
    if (!server_)
        return;
    const QList<pid_t> children = childrenOf(server_->processId());
    server_->kill();
    for (const pid_t child : children)
        ::kill(child, SIGKILL);
    server_->waitForFinished();
    server_.reset();
}

void Server::promote()
{
    run(asUser(QStringLiteral("pg_ctl")) + QStringList{QStringLiteral("-D"), data(), QStringLiteral("promote")});
}

} // namespace trial
