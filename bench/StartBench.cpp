#include "bench/StartBench.h"

#include "bench/SaleWindow.h"
#include "bench/TypicalPatients.h"
#include "bench/Work.h"
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

std::string patientsIn(const ado::Connection &connection)
{
    return grouped(connection.read(QStringLiteral("SELECT COUNT(*) FROM Customer")).raw(0, 0).toInt());
}

} // namespace

void registerStart(const OrderedClinic &clinic, Table &table)
{
    const std::string size = "/" + std::to_string(clinic.orders);
    const std::string patients = patientsIn(*clinic.connection) + " patients";
    const QStringList desk{QStringLiteral("--until-shown"), QStringLiteral("--database"), clinic.connection->address()};
    const QString patient = QString::number(typicalPatients(*clinic.connection).front().key);
    const struct
    {
        const char *name;
        std::string what;
        QStringList arguments;
        Word word;
        double limit;
    } starts[] = {
        {"start/desk", "start the desk, " + patients + ", until its window is painted", desk, WindowPainted, 100},
        {"start/patients", "the same, until the patients are", desk, ListPainted, 250},
        {"start/sale", "start with a patient's sale, until its window is painted",
         desk + QStringList{QStringLiteral("--patient"), patient}, WindowPainted, 200}};
    for (const auto &one : starts) {
        const std::string name = one.name + size;
        benchmark::RegisterBenchmark(name.c_str(),
                                     [one](benchmark::State &state) { start(state, one.arguments, one.word); })
            ->Iterations(Starts)
            ->UseManualTime();
        table.add({one.what, name, {}, one.limit});
    }
    const std::string name = "search" + size;
    benchmark::RegisterBenchmark(name.c_str(), [connection = clinic.connection](benchmark::State &state) {
        search(state, connection);
    })->Iterations(Starts);
    table.add({"search a patient, " + patients + ", first sign typed, painted", name, {}, 100});
}

} // namespace bench
