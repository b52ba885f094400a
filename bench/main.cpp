#include "bench/AddLineBench.h"
#include "bench/Clinics.h"
#include "bench/DayBench.h"
#include "bench/FindBench.h"
#include "bench/NamesBench.h"
#include "bench/OutstandingBench.h"
#include "bench/ProductListBench.h"
#include "bench/ProductSaveBench.h"
#include "bench/Program.h"
#include "bench/ReadBench.h"
#include "bench/ReceiptBench.h"
#include "bench/SaleBench.h"
#include "bench/StartBench.h"
#include "bench/StatisticsBench.h"
#include "bench/Table.h"
#include "bench/TotalsBench.h"
#include "bench/WindowBench.h"

namespace {

bool measure(bench::Table &table)
{
    const bench::Clinics clinics = bench::openClinics();
    const std::vector<bench::OrderedClinic> byOrders = bench::byOrders(clinics);
    bench::registerStart(byOrders.back(), table);
    bench::registerProductList(clinics, table);
    bench::registerWindow(clinics, table);
    bench::registerFind(clinics, table);
    bench::registerTotals(clinics, table);
    bench::registerAddLine(clinics, table);
    bench::registerNames(clinics, table);
    bench::registerReceipts(clinics, table);
    for (const bench::OrderedClinic &clinic : byOrders)
        bench::registerRead(clinic, table);
    bench::registerOutstanding(byOrders.back(), table);
    bench::registerSale(clinics, table);
    bench::registerProductSave(clinics, table);
    bench::registerDay(clinics, table);
    bench::registerStatistics(byOrders.back(), table);
    benchmark::RunSpecifiedBenchmarks(&table);
    return table.print();
}

} // namespace

int main(int argc, char **argv)
{
    bench::Table table;
    return bench::runProgram(argc, argv, "sale_bench", [&] { return measure(table); });
}
