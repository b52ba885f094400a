#include "bench/far/Measure.h"

#include "bench/far/Deeds.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <algorithm>

namespace bench {

namespace {

template <typename Work>
Taken measured(FarWire &wire, Work &&work)
{
    wire.take();
    QElapsedTimer clock;
    clock.start();
    work();
    const double milliseconds = double(clock.nsecsElapsed()) / 1e6;
    return {wire.take(), milliseconds};
}

using Actions = std::vector<Action>;

void add(Actions &actions, const char *what, int least, const char *why, const Taken &taken)
{
    const auto known = std::ranges::find_if(actions, [&](const Action &one) { return one.what == what; });
    Action &action = known == actions.end() ? actions.emplace_back(Action{what, least, why, {}}) : *known;
    action.rounds.push_back(taken);
}

void measureWindow(Place &place, Actions &actions, int round)
{
    const ado::ConnectionPtr connection = ado::Connection::open(place.far());
    SaleWindow window(connection);
    add(actions, "open a patient, first of the day", 4, "tables; the link to a head office; the lists; the first order",
        measured(place.wire(), [&] { window.open(place.patient(2 * round)); }));
    const desk::Patient patient = place.patient(2 * round + 1);
    add(actions, "open another patient", 2, "the link to a head office and the lists; the first order",
        measured(place.wire(), [&] { window.open(patient); }));
    for (const Deed &deed : deeds()) {
        if (deed.prepare)
            deed.prepare(window);
        const QString before = place.rows();
        const Taken taken = measured(place.wire(), [&] { deed.run(window); });
        if ((place.rows() != before) != deed.writes)
            throw std::runtime_error(std::string("it was not done: ") + deed.what);
        add(actions, deed.what, deed.least, deed.why, taken);
    }
}

void measureStart(Place &place, Actions &actions)
{
    const QString program = QCoreApplication::applicationDirPath() + QStringLiteral("/desk");
    const Taken taken = measured(place.wire(), [&] {
        QProcess desk;
        desk.start(program, {QStringLiteral("--until-shown"), QStringLiteral("--database"), place.far()});
        if (!desk.waitForFinished() || desk.exitStatus() != QProcess::NormalExit || desk.exitCode() != 0)
            throw std::runtime_error("the desk does not start: " + desk.readAllStandardError().toStdString());
    });
    add(actions, "start of the desk, until its patients are painted", 4, "greeting; settings; probes; patients", taken);
}

} // namespace

std::vector<Action> measure(Place &place, int rounds)
{
    Actions actions;
    for (int round = 0; round < rounds; ++round)
        measureStart(place, actions);
    for (int round = 0; round < rounds; ++round)
        measureWindow(place, actions, round);
    return actions;
}

} // namespace bench
