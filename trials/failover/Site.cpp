#include "trials/failover/Site.h"

#include <cstdlib>

#include <sched.h>
#include <sys/mount.h>

#include <stdexcept>

namespace trial {

QByteArray run(const QStringList &words)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(words.first(), words.mid(1));
    const bool ended = process.waitForFinished(60'000);
    const QByteArray said = process.readAll();
    if (!ended || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        throw std::runtime_error(words.join(u' ').toStdString() + ": " + said.toStdString());
    return said;
}

void Site::leaveMachine()
{
    if (::unshare(CLONE_NEWNET | CLONE_NEWNS) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        throw std::runtime_error("a network of its own needs root");
    if (std::system("ip link add desks type veth peer name clinic && ip link del desks") != 0)
        throw std::runtime_error("this machine lends no cable");
}

Site::Site()
{
    const QString ends = QStringLiteral("ip link add desks type veth peer name clinic");
    farEnd_.start(QStringLiteral("setpriv"), QStringLiteral("--pdeathsig KILL unshare --net sh -c").split(u' ')
                                                 << QStringLiteral("echo ready; exec sleep infinity"));
    if (!farEnd_.waitForReadyRead(10'000))
        throw std::runtime_error("there is no far end");
    for (const QString &step :
         {QStringLiteral("ip link set lo up"), ends,
          QStringLiteral("ip link set clinic netns %1").arg(farEnd_.processId()),
          QStringLiteral("ip addr add %1/24 dev desks").arg(second()), QStringLiteral("ip link set desks up")})
        run(step.split(u' '));
    for (const QString &step :
         {QStringLiteral("ip link set lo up"), QStringLiteral("ip addr add %1/24 dev clinic").arg(first()),
          QStringLiteral("ip link set clinic up")})
        run(atFirst() + step.split(u' '));
}

Site::~Site()
{
    farEnd_.kill();
    farEnd_.waitForFinished();
}

QStringList Site::atFirst() const
{
    return {QStringLiteral("nsenter"), QStringLiteral("--net=/proc/%1/ns/net").arg(farEnd_.processId())};
}

void Site::pullCable()
{
    run(atFirst() + QStringLiteral("ip link set clinic down").split(u' '));
}

void Site::mendCable()
{
    run(atFirst() + QStringLiteral("ip link set clinic up").split(u' '));
}

} // namespace trial
