#include "platform/runtime/RuntimeError.h"
#include "trials/ground/Options.h"
#include "trials/soak/Soak.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

int run(const trial::Options &options)
{
    const int minutes = options.number("minutes");
    if (minutes < 1 || minutes > 120) // the numbers by which rows are known would not last
        throw std::runtime_error("a soak takes 1 to 120 minutes");
    const std::unique_ptr<PostgresServer> server = options.server();
    trial::Ground ground(options.engine(), options.size(), server.get());
    return trial::Soak(ground, server.get(), minutes * 60, unsigned(options.number("seed"))).run() ? 0 : 1;
}

} // namespace

/// trial_soak ENGINE [--minutes N] [--orders N] [--seed N]
int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    try {
        return run({application, {{QStringLiteral("minutes"), 60}, {QStringLiteral("seed"), 1}}});
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "trial_soak: %s\n", qPrintable(error.description()));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "trial_soak: %s\n", error.what());
    }
    return 1;
}
