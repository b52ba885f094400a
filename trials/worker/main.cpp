#include "clinic/Tables.h"
#include "platform/runtime/RuntimeError.h"
#include "session/modGlobalVars.h"
#include "trials/desk/Clerk.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

namespace {

int value(const QCommandLineParser &arguments, const char *name)
{
    return arguments.value(QLatin1String(name)).toInt();
}

int work(const QCommandLineParser &arguments)
{
    gcnnMasterDB = ado::Connection::open(arguments.positionalArguments().value(0));
    trial::Journal journal(arguments.positionalArguments().value(1));
    trial::Clerk::Task task;
    task.seed = unsigned(value(arguments, "seed"));
    task.firstToken = value(arguments, "token");
    task.ordersBefore = value(arguments, "before");
    task.productsBefore = value(arguments, "products");
    task.patients = value(arguments, "patients");
    task.crowding = value(arguments, "crowding");
    {
        trial::Clerk clerk(task, journal);
        const qint64 until = trial::now() + qint64(value(arguments, "seconds")) * 1'000'000;
        while (trial::now() < until)
            clerk.visit();
    }
    gcnnMasterDB.reset();
    return 0;
}

} // namespace

/// trial_worker ADDRESS JOURNAL --seconds N --seed N --token N --before KEY --products KEY --patients N --crowding PERCENT
int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser arguments;
    for (const char *name : {"seconds", "seed", "token", "before", "products", "patients", "crowding"})
        arguments.addOption({QLatin1String(name), {}, QStringLiteral("number")});
    arguments.process(application);
    clinic::registerTables();
    try {
        return work(arguments);
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "trial_worker: %s\n", qPrintable(error.description()));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "trial_worker: %s\n", error.what());
    }
    return 1;
}
