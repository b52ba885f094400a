#include "platform/runtime/RuntimeError.h"
#include "trials/ground/Ground.h"
#include "trials/ground/Options.h"
#include "trials/load/Sessions.h"

#include <QCoreApplication>
#include <QThread>

#include <algorithm>
#include <cstdio>

namespace {

struct Kind
{
    std::vector<qint64> times; ///< microseconds
    int refused = 0;
};

double milliseconds(std::vector<qint64> &sorted, double part)
{
    return sorted.empty() ? 0 : double(sorted[std::size_t(double(sorted.size() - 1) * part)]) / 1000;
}

void row(const char *name, Kind &kind)
{
    std::sort(kind.times.begin(), kind.times.end());
    std::printf("| %-12s | %7zu | %7d | %8.2f | %8.2f | %8.2f |\n", name, kind.times.size(), kind.refused,
                milliseconds(kind.times, 0.5), milliseconds(kind.times, 0.95), milliseconds(kind.times, 1));
}

void print(const std::vector<std::vector<trial::Deed>> &journals, int seconds)
{
    std::map<QByteArray, Kind> kinds;
    Kind all;
    for (const auto &journal : journals) {
        for (const trial::Deed &deed : journal) {
            for (Kind *kind : {&kinds[deed.kind], &all}) {
                if (deed.state == trial::State::Refused)
                    ++kind->refused;
                else if (deed.state == trial::State::Done)
                    kind->times.push_back(deed.ended - deed.begun);
            }
        }
    }
    std::printf("| %-12s | %7s | %7s | %8s | %8s | %8s |\n|---|---:|---:|---:|---:|---:|\n", "operation", "done",
                "refused", "p50 ms", "p95 ms", "max ms");
    for (auto &[name, kind] : kinds)
        row(name.constData(), kind);
    row("all", all);
    std::printf("\n%.0f operations a second\n", double(all.times.size()) / seconds);
}

int tell(const trial::Findings &findings)
{
    std::printf("%d acknowledged, %d refused (%d of them conflicts), %d left half done; standing: %d orders, %d lines, "
                "%d ledger rows, %d products\n",
                findings.acknowledged, findings.refused, findings.conflicts, findings.halfDone, findings.orders,
                findings.lines, findings.entries, findings.products);
    for (const QString &fault : findings.faults.first(std::min<qsizetype>(20, findings.faults.size())))
        std::printf("FAULT: %s\n", qPrintable(fault));
    std::printf("%d faults\n", int(findings.faults.size()));
    return findings.faults.isEmpty() && findings.acknowledged > 0 ? 0 : 1;
}

/// A first payment holds 24 bits of an amount, so the tokens of all desks, which work in three shifts over a restore, are
/// less than that.
int tokensOfADesk(const trial::Options &options)
{
    const int shifts = options.number("restores") > 0 ? 3 : 1;
    return std::min(1'000'000, (1 << 24) / (shifts * options.number("desks")));
}

void tellSessions(const QString &address)
{
    const trial::Sessions sessions = trial::Sessions::of(*ado::Connection::open(address));
    if (sessions.count > 0)
        std::printf("%d sessions at the server, each of %.1f MB of its own and %.1f MB of what they share\n\n",
                    sessions.count, sessions.own, sessions.shared);
}

/// Lets so many desks work on the clinic at once; false when one did not end by itself.
bool work(trial::Ground &ground, const trial::Options &options, int seconds, int shift)
{
    std::vector<std::unique_ptr<QProcess>> desks;
    const QStringList pause{QStringLiteral("--pause"), QString::number(options.number("pause"))};
    for (int desk = shift; desk < shift + options.number("desks"); ++desk)
        desks.push_back(ground.startDesk(seconds, unsigned(options.number("seed") + desk),
                                         tokensOfADesk(options) * desk + 1, options.number("crowding"), pause));
    QThread::sleep(unsigned(seconds) / 2);
    tellSessions(ground.address());
    bool ended = true;
    for (const auto &desk : desks)
        ended = desk->waitForFinished((seconds + 60) * 1000) && desk->exitCode() == 0 && ended;
    if (!ended)
        std::printf("a desk did not end by itself\n");
    return ended;
}

/// The clinic is copied, worked on and put back as it was: what was acknowledged before stands, nothing of what came after,
/// and the desks work on.
bool workOverRestore(trial::Ground &ground, const trial::Options &options, int seconds)
{
    const int desks = options.number("desks");
    ground.backUp();
    const qsizetype before = ground.journals().size();
    bool ended = work(ground, options, seconds, desks);
    ground.restore(ground.journals().mid(before));
    const trial::Findings findings = ground.check();
    std::printf("restored: %d acknowledged before it, %d faults\n", findings.acknowledged, int(findings.faults.size()));
    ended = findings.faults.isEmpty() && ended;
    return work(ground, options, seconds, 2 * desks) && ended;
}

int run(const trial::Options &options)
{
    const std::unique_ptr<PostgresServer> server = options.server();
    trial::Ground ground(options.engine(), options.size(), server.get(), options.text("at"));
    if (const QString desks = options.text("desks-at"); !desks.isEmpty())
        ground.leadDesksOver(desks);
    const int seconds = options.number("seconds");
    bool ended = work(ground, options, seconds, 0);
    print(ground.readJournals(), seconds);
    if (options.number("restores") > 0)
        ended = workOverRestore(ground, options, seconds) && ended;
    const int result = tell(ground.check());
    return ended ? result : 1;
}

} // namespace

/// trial_load ENGINE [--desks N] [--seconds N] [--orders N] [--crowding PERCENT] [--seed N] [--restores 0|1]
///     [--pause MILLISECONDS] [--at ADDRESS] [--desks-at ADDRESS]
int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    try {
        return run({application,
                    {{QStringLiteral("desks"), 8},
                     {QStringLiteral("seconds"), 60},
                     {QStringLiteral("crowding"), 10},
                     {QStringLiteral("seed"), 1},
                     {QStringLiteral("restores"), 0},
                     {QStringLiteral("pause"), 0}}});
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "trial_load: %s\n", qPrintable(error.description()));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "trial_load: %s\n", error.what());
    }
    return 1;
}
