#include "bench/far/Measure.h"
#include "clinic/Tables.h"
#include "desk/window/Look.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/WaitingLine.h"
#include "platform/registry/AppSettings.h"
#include "platform/runtime/RuntimeError.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int rounds = 5;
// What a desk may take above the least.
constexpr int furtherWaits = 2;
constexpr double timesBare = 1.3;

QString ratio(double time, double least)
{
    return least > 0 ? QString::number(time / least, 'f', 2) : QString();
}

void printStatements(const std::vector<bench::Action> &actions)
{
    for (const bench::Action &action : actions) {
        std::printf("%s\n", action.what);
        for (const std::string &statement : action.rounds.front().traffic.told())
            std::printf("    %s\n", statement.c_str());
    }
}

const bench::Taken &medianBy(double bench::Taken::*time, std::vector<bench::Taken> &taken)
{
    const auto middle = taken.begin() + std::ptrdiff_t(taken.size() / 2);
    std::ranges::nth_element(taken, middle, {}, time);
    return *middle;
}

/// Each by the median of its rounds' times. Whether all keep within the limits.
bool print(std::vector<bench::Action> actions)
{
    bool keeps = true;
    std::printf("| what | statements | waits | least | time to paint | least | ratio | bare API | ratio | which waits "
                "are the least |\n"
                "|---|---:|---:|---:|---:|---:|---:|---:|---:|---|\n");
    for (bench::Action &action : actions) {
        const double bare = medianBy(&bench::Taken::bare, action.rounds).bare;
        const bench::Taken &median = medianBy(&bench::Taken::milliseconds, action.rounds);
        const int least = action.least * bench::Place::waitMilliseconds();
        const bool asks = !median.traffic.sent.empty();
        const bool kept =
            median.traffic.waits <= action.least + furtherWaits && (!asks || median.milliseconds <= timesBare * bare);
        keeps = keeps && kept;
        std::printf("| %s | %d | %d | %d | %.0f ms | %d ms | %s | %.0f ms | %s%s | %s |\n", action.what,
                    median.traffic.statements(), median.traffic.waits, action.least, median.milliseconds, least,
                    qPrintable(ratio(median.milliseconds, least)), bare,
                    qPrintable(asks ? ratio(median.milliseconds, bare) : QString()), kept ? "" : " **missed**",
                    action.why);
    }
    return keeps;
}

} // namespace

/// far_times [--statements], with which each action's are told as well, by the number of their wait. Status 1 where an action
/// takes more than it may, or fails.
/// The server's way is made longer by a wire within this program: no network of a machine's own, and no rights, are needed.
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    desk::dressUp(application);
    controls::showWaitingLine();
    const QTemporaryDir settings; // not those of whoever runs this
    registry::setStoreFolder(settings.path());
    clinic::registerTables();
    const QString emptyWindow = application.applicationDirPath() + QStringLiteral("/empty_window");
    const bool tellsStatements = application.arguments().contains(QStringLiteral("--statements"));
    controls::setMessageHandler([](const QString &text, int flags, const QString &, const QString &) {
        if (!(flags & 0xF))
            std::fprintf(stderr, "far_times: %s\n", qPrintable(text));
        return flags & 0xF ? controls::Answer::Yes : controls::Answer::Confirm;
    });
    try {
        bench::Place place(sample::Size::Hundredth);
        const std::vector<bench::Action> actions = bench::measure(place, rounds, emptyWindow);
        if (tellsStatements)
            printStatements(actions);
        return print(actions) ? 0 : 1;
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "far_times: %s\n", qPrintable(error.description()));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "far_times: %s\n", error.what());
    }
    return 1;
}
