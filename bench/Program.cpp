#include "bench/Program.h"

#include "clinic/Tables.h"
#include "desk/window/Look.h"
#include "platform/registry/AppSettings.h"
#include "platform/runtime/RuntimeError.h"

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdio>

namespace bench {

int runProgram(int &argc, char **argv, const char *name, const std::function<bool()> &work)
{
    QApplication application(argc, argv);
    desk::dressUp(application);
    const QTemporaryDir settings; // not those of whoever runs this
    registry::setStoreFolder(settings.path());
    clinic::registerTables();
    benchmark::Initialize(&argc, argv);
    try {
        return work() ? 0 : 1;
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "%s: %s\n", name, qUtf8Printable(error.description()));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s: %s\n", name, error.what());
    }
    return 1;
}

} // namespace bench
