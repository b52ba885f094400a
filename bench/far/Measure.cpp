#include "bench/far/Measure.h"

#include "bench/far/Deeds.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <algorithm>
#include <utility>

namespace bench {

namespace {

template <typename Work>
double millisecondsOf(Work &&work)
{
    QElapsedTimer clock;
    clock.start();
    work();
    return double(clock.nsecsElapsed()) / 1e6;
}

template <typename Work>
Taken measured(FarWire &wire, Work &&work)
{
    Traffic before = wire.take();
    const double milliseconds = millisecondsOf(work);
    return {std::move(before), wire.take(), milliseconds};
}

struct Actions
{
    std::vector<Action> known;
    std::vector<Step> session; ///< those of the one that is open
};

void add(Actions &actions, const char *what, int least, const char *why, const Taken &taken)
{
    actions.session.push_back({what, least, why, taken});
}

/// The session is closed.
void finish(Place &place, Actions &actions)
{
    Step farewell{"close", 0, "", {}};
    farewell.taken.traffic = place.wire().take();
    actions.session.push_back(farewell);
    replay(place, actions.session);
    actions.session.pop_back();
    for (const Step &step : std::exchange(actions.session, {})) {
        const auto known =
            std::ranges::find_if(actions.known, [&](const Action &one) { return one.what == step.what; });
        Action &action = known == actions.known.end()
                             ? actions.known.emplace_back(Action{step.what, step.least, step.why, {}})
                             : *known;
        action.rounds.push_back(step.taken);
    }
}

void measureWindow(Place &place, Actions &actions, int round)
{
    const ado::ConnectionPtr connection = ado::Connection::open(place.far());
    SaleWindow window(connection);
    const desk::Patient first = place.patient(2 * round), patient = place.patient(2 * round + 1);
    add(actions, "open a patient, first of the day", 2,
        "tables, the link to a head office and the lists; the first order",
        measured(place.wire(), [&] { window.open(first); }));
    add(actions, "open another patient", 2, "the link to a head office and the lists; the first order",
        measured(place.wire(), [&] { window.open(patient); }));
    for (const Deed &deed : deeds()) {
        if (deed.prepare)
            deed.prepare(window);
        const QString before = place.rows();
        Taken taken = measured(place.wire(), [&] { deed.run(window); });
        taken.rows = place.rows();
        if ((taken.rows != before) != deed.writes)
            throw std::runtime_error(std::string("it was not done: ") + deed.what);
        add(actions, deed.what, deed.least, deed.why, taken);
    }
}

void runProgram(const QString &name, const QStringList &arguments)
{
    QProcess program;
    program.start(name, arguments);
    if (!program.waitForFinished() || program.exitStatus() != QProcess::NormalExit || program.exitCode() != 0)
        throw std::runtime_error(name.toStdString()
                                 + " does not start: " + program.readAllStandardError().toStdString());
}

void measureStart(Place &place, Actions &actions, const QString &emptyWindow)
{
    const QString program = QCoreApplication::applicationDirPath() + QStringLiteral("/desk");
    Taken taken = measured(place.wire(), [&] {
        runProgram(program, {QStringLiteral("--until-shown"), QStringLiteral("--database"), place.far()});
    });
    if (!emptyWindow.isEmpty())
        taken.bare = millisecondsOf([&] { runProgram(emptyWindow, {}); });
    add(actions, "start of the desk, until its patients are painted", 3,
        "greeting; settings and probes; the patients, behind the first paint", taken);
}

} // namespace

std::vector<Action> measure(Place &place, int rounds, const QString &emptyWindow)
{
    Actions actions;
    place.wire().take();
    for (int round = 0; round < rounds; ++round) {
        measureStart(place, actions, emptyWindow);
        finish(place, actions);
    }
    for (int round = 0; round < rounds; ++round) {
        measureWindow(place, actions, round);
        finish(place, actions);
    }
    return actions.known;
}

} // namespace bench
