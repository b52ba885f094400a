#include "bench/OutstandingBench.h"
#include "bench/ReadBench.h"
#include "bench/SaleBench.h"
#include "bench/StartBench.h"
#include "bench/StatisticsBench.h"
#include "bench/WindowBench.h"
#include "clinic/Tables.h"
#include "desk/window/Look.h"
#include "platform/registry/AppSettings.h"
#include "platform/runtime/RuntimeError.h"

#include <QApplication>
#include <QTemporaryDir>

#include <cstdio>

namespace {

constexpr long sizes[] = {1'000'000, 10'000'000};

void add(const bench::OrderedClinic &clinic, bench::Table &table)
{
    if (clinic.connection->engine() == ado::Engine::SQLite) {
        bench::registerStart(clinic, table);
        bench::registerOpening(clinic, table);
    }
    bench::registerRead(clinic, table);
    if (clinic.connection->engine() == ado::Engine::SQLite)
        bench::registerOutstanding(clinic, table);
    bench::registerWriting(clinic, table);
    for (const bench::Span span : {bench::Span::Month, bench::Span::Year})
        bench::registerStatistics(clinic, table, span);
}

} // namespace

/// growth_times CLINIC CLINIC_OF_TEN_TIMES_AS_MANY_ORDERS [arguments of Google Benchmark]
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    desk::dressUp(application);
    const QTemporaryDir settings; // not those of whoever runs this
    registry::setStoreFolder(settings.path());
    clinic::registerTables();
    benchmark::Initialize(&argc, argv);
    bench::Table table;
    try {
        if (argc != 3)
            throw std::runtime_error("takes the addresses of two clinics");
        for (int number = 0; number < 2; ++number)
            add({ado::Connection::open(QString::fromLocal8Bit(argv[number + 1])), sizes[number]}, table);
        benchmark::RunSpecifiedBenchmarks(&table);
        table.printGrowth(sizes[0], sizes[1]);
        return 0;
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "growth_times: %s\n", qUtf8Printable(error.description()));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "growth_times: %s\n", error.what());
    }
    return 1;
}
