#include "bench/StartBench.h"

#include "bench/Patients.h"

#include <QCoreApplication>
#include <QProcess>

namespace bench {

namespace {

constexpr int Starts = 3; ///< in one repetition

void start(benchmark::State &state, const QStringList &arguments)
{
    const QString program = QCoreApplication::applicationDirPath() + QStringLiteral("/desk");
    for (auto _ : state) {
        QProcess desk;
        desk.start(program, arguments);
        if (!desk.waitForFinished() || desk.exitStatus() != QProcess::NormalExit || desk.exitCode() != 0) {
            state.SkipWithError("desk did not show a window");
            return;
        }
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
    } starts[] = {{"start/desk", "start the desk, 50,000 patients, until its window is painted and the process gone", desk},
                  {"start/sale", "start with a patient's sale, likewise", desk + QStringList{QStringLiteral("--patient"), patient}}};
    for (const auto &one : starts) {
        benchmark::RegisterBenchmark(one.name, [arguments = one.arguments](benchmark::State &state) {
            start(state, arguments);
        })->Iterations(Starts)->UseRealTime();
        table.add({one.what, one.name, {}, 500});
    }
}

} // namespace bench
