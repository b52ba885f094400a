#include "desk/sample/Clinic.h"
#include "platform/runtime/RuntimeError.h"
#include "trials/failover/Failover.h"
#include "trials/ground/Options.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace {

using trial::Kind;
using trial::Result;

struct Row
{
    Kind kind;
    const char *option;
    const char *name;
};
constexpr Row rows[] = {{Kind::Killed, "killed", "killed (-9)"},
                        {Kind::Cut, "cut", "its cable pulled"},
                        {Kind::Full, "full", "its disk full"}};

double at(const std::vector<double> &sorted, double part)
{
    return sorted.empty() ? 0 : sorted[std::size_t(double(sorted.size() - 1) * part)];
}

void print(const char *name, Result &result)
{
    std::sort(result.back.begin(), result.back.end());
    std::printf("| %s | %d | %d | %d | %d | %.1f | %.1f | %.1f | %d | %d |\n", name, result.failovers,
                result.acknowledged, result.unknown, int(result.faults.size()), at(result.back, 0.5),
                at(result.back, 0.95), at(result.back, 1), result.oldTried, result.oldAcknowledged);
    for (const QString &fault : result.faults.first(std::min<qsizetype>(10, result.faults.size())))
        std::printf("FAULT: %s\n", qPrintable(fault));
    std::fflush(stdout);
}

/// A clinic on a server that stands still: each failover begins with copies of it.
void makeModel(trial::Server &model)
{
    model.initialise();
    model.start();
    trial::run({QStringLiteral("createdb"), QStringLiteral("-h"), model.host(), QStringLiteral("-U"),
                QStringLiteral("clinic"), QStringLiteral("clinic")});
    sample::makeClinic(model.address(), sample::Size::Small);
    model.stop();
}

int run(const trial::Options &options)
{
    QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/clinic-failover-XXXXXX"));
    QFile::setPermissions(folder.path(), QFile::permissions(folder.path()) | QFile::ReadOther | QFile::ExeOther
                                             | QFile::ReadGroup | QFile::ExeGroup);
    trial::Site site;
    trial::Server model(folder.filePath(QStringLiteral("model")), trial::Site::second());
    makeModel(model);
    std::printf("| the first server | failovers | acknowledged | unknown to their desks | lost, doubled, unbalanced | "
                "back p50 s | p95 s | longest s | tried at the old one | acknowledged there |\n"
                "|---|---:|---:|---:|---:|---:|---:|---:|---:|---:|\n");
    bool sound = true;
    int seed = options.number("seed");
    for (const Row &row : rows) {
        Result result;
        for (int failover = 0; failover < options.number(row.option) && result.faults.isEmpty(); ++failover)
            trial::Failover(site, folder.path(), model, row.kind, unsigned(seed++))
                .run(options.number("desks"), site, result);
        if (result.failovers == 0)
            continue;
        print(row.name, result);
        sound = sound && result.faults.isEmpty() && result.oldAcknowledged == 0 && at(result.back, 0.95) <= 10;
    }
    return sound ? 0 : 1;
}

} // namespace

/// trial_failover [--killed N] [--cut N] [--full N] [--desks N] [--seed N]
int main(int argc, char **argv)
{
    try {
        trial::Site::leaveMachine();
    } catch (const std::exception &error) {
        std::fprintf(stderr, "trial_failover: passed over: %s\n", error.what());
        return 77;
    }
    QCoreApplication application(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    try {
        return run({application,
                    {{QStringLiteral("killed"), 50},
                     {QStringLiteral("cut"), 20},
                     {QStringLiteral("full"), 5},
                     {QStringLiteral("desks"), 8},
                     {QStringLiteral("seed"), 1}}});
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "trial_failover: %s\n", qPrintable(error.description()));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "trial_failover: %s\n", error.what());
    }
    return 1;
}
