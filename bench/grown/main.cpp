#include "bench/OutstandingBench.h"
#include "bench/Program.h"
#include "bench/ReadBench.h"
#include "bench/SaleBench.h"
#include "bench/StartBench.h"
#include "bench/StatisticsBench.h"
#include "bench/WindowBench.h"

#include <stdexcept>

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
    bench::Table table;
    return bench::runProgram(argc, argv, "growth_times", [&] {
        if (argc != 3)
            throw std::runtime_error("takes the addresses of two clinics");
        for (int number = 0; number < 2; ++number)
            add({ado::Connection::open(QString::fromLocal8Bit(argv[number + 1])), sizes[number]}, table);
        benchmark::RunSpecifiedBenchmarks(&table);
        table.printGrowth(sizes[0], sizes[1]);
        return true;
    });
}
