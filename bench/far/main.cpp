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

constexpr int rounds = 3;

QString ratio(double time, double least)
{
    return least > 0 ? QString::number(time / least, 'f', 2) : QString();
}

/// Each by the median of its rounds' times.
void print(std::vector<bench::Action> actions, bool tellsStatements)
{
    for (const bench::Action &action : actions) {
        if (!tellsStatements)
            break;
        std::printf("%s\n", action.what);
        for (const std::string &statement : action.rounds.front().traffic.told())
            std::printf("    %s\n", statement.c_str());
    }
    std::printf("| what | statements | waits | least | time to paint | least | ratio | bare API | ratio | which waits "
                "are the least |\n"
                "|---|---:|---:|---:|---:|---:|---:|---:|---:|---|\n");
    for (bench::Action &action : actions) {
        std::ranges::sort(action.rounds, {}, &bench::Taken::bare);
        const double bare = action.rounds[action.rounds.size() / 2].bare;
        std::ranges::sort(action.rounds, {}, &bench::Taken::milliseconds);
        const bench::Taken &median = action.rounds[action.rounds.size() / 2];
        const int least = action.least * bench::Place::waitMilliseconds();
        std::printf("| %s | %d | %d | %d | %.0f ms | %d ms | %s | %.0f ms | %s | %s |\n", action.what,
                    median.traffic.statements(), median.traffic.waits, action.least, median.milliseconds, least,
                    qPrintable(ratio(median.milliseconds, least)), bare,
                    qPrintable(median.traffic.sent.empty() ? QString() : ratio(median.milliseconds, bare)), action.why);
    }
}

} // namespace

/// far_times [--statements], with which each action's are told as well, by the number of their wait.
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
        print(bench::measure(place, rounds, emptyWindow), tellsStatements);
        return 0;
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "far_times: %s\n", qPrintable(error.description()));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "far_times: %s\n", error.what());
    }
    return 1;
}
