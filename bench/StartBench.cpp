#include "bench/StartBench.h"

#include "bench/SaleWindow.h"
#include "bench/TypicalPatients.h"
#include "desk/window/DeskWindow.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QProcess>
#include <QTest>

#include <memory>

namespace bench {

namespace {

constexpr int Starts = 3; ///< in one repetition

/// The desk tells two things, in this order.
enum Word { WindowPainted = 1, ListPainted = 2 };

/// From the start of the process to its word, in seconds; 0 when it did not say so.
double untilShown(const QString &program, const QStringList &arguments, Word word)
{
    QProcess desk;
    QElapsedTimer clock;
    clock.start();
    desk.start(program, arguments);
    QByteArray said;
    while (said.count('\n') < word && desk.waitForReadyRead())
        said += desk.readAll();
    const double seconds = said.count('\n') >= word ? double(clock.nsecsElapsed()) / 1e9 : 0;
    return desk.waitForFinished() && desk.exitStatus() == QProcess::NormalExit && desk.exitCode() == 0 ? seconds : 0;
}

void start(benchmark::State &state, const QStringList &arguments, Word word)
{
    const QString program = QCoreApplication::applicationDirPath() + QStringLiteral("/desk");
    for (auto _ : state) {
        const double seconds = untilShown(program, arguments, word);
        if (seconds == 0) {
            state.SkipWithError("desk did not show a window");
            return;
        }
        state.SetIterationTime(seconds);
    }
}

/// The first sign that is typed into the patient search, half a second after the window came up.
void search(benchmark::State &state, const ado::ConnectionPtr &connection)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto window = std::make_unique<desk::DeskWindow>(connection);
        window->show();
        QTest::qWait(500);
        auto *typed = window->findChild<QLineEdit *>(QStringLiteral("txtSearch"));
        state.ResumeTiming();
        typed->setText(QStringLiteral("김"));
        untilPainted();
        state.PauseTiming();
        window.reset();
        state.ResumeTiming();
    }
}

} // namespace

void registerStart(const Clinics &clinics, Table &table)
{
    const QStringList desk{QStringLiteral("--until-shown"), QStringLiteral("--database"), clinics.large->address()};
    const QString patient = QString::number(typicalPatients(*clinics.large).front().key);
    const struct
    {
        const char *name;
        const char *what;
        QStringList arguments;
        Word word;
        double limit;
    } starts[] = {
        {"start/desk", "start the desk, 50,000 patients, until its window is painted", desk, WindowPainted, 100},
        {"start/patients", "the same, until the patients are", desk, ListPainted, 250},
        {"start/sale", "start with a patient's sale, until its window is painted",
         desk + QStringList{QStringLiteral("--patient"), patient}, WindowPainted, 200}};
    for (const auto &one : starts) {
        benchmark::RegisterBenchmark(one.name,
                                     [one](benchmark::State &state) { start(state, one.arguments, one.word); })
            ->Iterations(Starts)
            ->UseManualTime();
        table.add({one.what, one.name, {}, one.limit});
    }
    benchmark::RegisterBenchmark("search", [connection = clinics.large](benchmark::State &state) {
        search(state, connection);
    })->Iterations(Starts);
    table.add({"search a patient, 50,000 patients, first sign typed, painted", "search", {}, 100});
}

} // namespace bench
