#include "bench/AddLineBench.h"
#include "bench/Clinics.h"
#include "bench/DayBench.h"
#include "bench/FindBench.h"
#include "bench/NamesBench.h"
#include "bench/OutstandingBench.h"
#include "bench/ProductListBench.h"
#include "bench/ProductSaveBench.h"
#include "bench/ReadBench.h"
#include "bench/ReceiptBench.h"
#include "bench/SaleBench.h"
#include "bench/StartBench.h"
#include "bench/StatisticsBench.h"
#include "bench/Table.h"
#include "bench/TotalsBench.h"
#include "bench/WindowBench.h"
#include "clinic/Tables.h"
#include "desk/window/Look.h"
#include "platform/registry/AppSettings.h"

#include <QApplication>
#include <QTemporaryDir>

#include <cstdio>

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
    QApplication application(argc, argv);
    desk::dressUp(application);
    const QTemporaryDir settings; // not those of whoever runs this
    registry::setStoreFolder(settings.path());
    clinic::registerTables();
    benchmark::Initialize(&argc, argv);
    bench::Table table;
    try {
        return measure(table) ? 0 : 1;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "sale_bench: %s\n", error.what());
        return 1;
    }
}
