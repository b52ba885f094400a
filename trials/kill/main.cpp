#include "platform/runtime/RuntimeError.h"
#include "trials/ground/Ground.h"
#include "trials/ground/Options.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QThread>

#include <cstdio>

namespace {

/// So that the clock starts when the desk works, not when its program is being loaded.
void waitForFirstLine(const QString &journal, const QProcess &desk)
{
    for (int waited = 0; waited < 30'000 && desk.state() != QProcess::NotRunning; ++waited) {
        if (QFileInfo(journal).size() > 0)
            return;
        QThread::msleep(1);
    }
    throw std::runtime_error("a desk did not begin to work");
}

int run(const trial::Options &options)
{
    const std::unique_ptr<PostgresServer> server = options.server();
    trial::Ground ground(options.engine(), options.size(), server.get());
    std::mt19937 random(unsigned(options.number("seed")));
    const int kills = options.number("kills");
    trial::Findings findings;
    for (int kill = 1; kill <= kills; ++kill) {
        const auto desk = ground.startDesk(60, random(), 40'000 * kill, 0);
        waitForFirstLine(ground.lastJournal(), *desk);
        QThread::usleep(random() % 250'000);
        desk->kill();
        desk->waitForFinished();
        findings = ground.check();
        if (const QString damage = ground.damage(); !damage.isEmpty())
            findings.faults << QStringLiteral("the file is damaged: ") + damage;
        if (!findings.faults.isEmpty()) {
            std::printf("after kill %d\n", kill);
            break;
        }
    }
    for (const QString &fault : findings.faults)
        std::printf("FAULT: %s\n", qPrintable(fault));
    std::printf(
        "%d kills: %d operations acknowledged, %d died in, %d of these with some steps saved; %d refused; %d faults\n",
        kills, findings.acknowledged, findings.unfinished, findings.halfDone, findings.refused,
        int(findings.faults.size()));
    return findings.faults.isEmpty() && findings.unfinished > 0 ? 0 : 1;
}

} // namespace

/// trial_kill ENGINE [--kills N] [--seed N]
int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    try {
        return run({application, {{QStringLiteral("kills"), 300}, {QStringLiteral("seed"), 1}}});
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "trial_kill: %s\n", qPrintable(error.description()));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "trial_kill: %s\n", error.what());
    }
    return 1;
}
