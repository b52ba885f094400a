#include "clinic/Tables.h"
#include "desk/journal/Seal.h"
#include "platform/runtime/RuntimeError.h"
#include "session/modGlobalVars.h"
#include "trials/desk/Clerk.h"
#include "trials/desk/Gate.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QThread>

#include <csignal>
#include <cstdio>

namespace {

int value(const QCommandLineParser &arguments, const char *name)
{
    return arguments.value(QLatin1String(name)).toInt();
}

volatile std::sig_atomic_t toldToEnd = 0;

/// A server that is away is told to the user, who goes on to another patient.
void visit(trial::Clerk &clerk, bool mayFail)
{
    try {
        clerk.visit();
    } catch (const runtime::RuntimeError &) {
        if (!mayFail)
            throw;
        QThread::msleep(100);
    }
}

/// As a desk's own timer has it done.
void sealNowAndThen(qint64 &due)
{
    if (trial::now() < due)
        return;
    due = trial::now() + 3'000'000;
    try {
        journal::sealSome(*gcnnMasterDB);
    } catch (const runtime::RuntimeError &) {
        return; // the next one does it
    }
}

int work(const QCommandLineParser &arguments)
{
    gcnnMasterDB = ado::Connection::open(arguments.positionalArguments().value(0));
    journal::attend(*gcnnMasterDB);
    trial::Journal journal(arguments.positionalArguments().value(1));
    trial::Clerk::Task task;
    task.seed = unsigned(value(arguments, "seed"));
    task.firstToken = value(arguments, "token");
    task.ordersBefore = value(arguments, "before");
    task.productsBefore = value(arguments, "products");
    task.patients = value(arguments, "patients");
    task.crowding = value(arguments, "crowding");
    const trial::Gate gate(arguments.value(QStringLiteral("gate")));
    {
        trial::Clerk clerk(task, journal);
        qint64 sealDue = 0;
        const qint64 until = trial::now() + qint64(value(arguments, "seconds")) * 1'000'000;
        while (trial::now() < until && !toldToEnd) {
            {
                const trial::Gate::Pass pass(gate);
                visit(clerk, value(arguments, "faults") != 0);
                sealNowAndThen(sealDue);
            }
            QThread::msleep(unsigned(value(arguments, "pause")));
        }
    }
    gcnnMasterDB.reset();
    return 0;
}

} // namespace

/// trial_worker ADDRESS JOURNAL --seconds N --seed N --token N --before KEY --products KEY --patients N --crowding PERCENT
///     [--pause MILLISECONDS] [--gate FILE] [--faults 1]
/// SIGTERM lets it finish the patient it is with.
int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser arguments;
    for (const char *name :
         {"seconds", "seed", "token", "before", "products", "patients", "crowding", "pause", "gate", "faults"})
        arguments.addOption({QLatin1String(name), {}, QStringLiteral("number")});
    arguments.process(application);
    clinic::registerTables();
    std::signal(SIGTERM, [](int) { toldToEnd = 1; });
    try {
        return work(arguments);
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "trial_worker: %s\n", qPrintable(error.description()));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "trial_worker: %s\n", error.what());
    }
    return 1;
}
