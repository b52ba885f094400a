#include "bench/WindowBench.h"

#include "bench/SaleWindow.h"
#include "bench/TypicalPatients.h"

#include <QTest>

namespace bench {

namespace {

constexpr int Steps = 10; ///< in one repetition

void openings(benchmark::State &state, const ado::ConnectionPtr &connection, const std::vector<desk::Patient> &patients,
              bool windowStands)
{
    SaleWindow window(connection);
    if (windowStands)
        window.open(patients.back());
    std::size_t next = 0;
    for (auto _ : state) {
        if (!windowStands) {
            state.PauseTiming();
            window.close();
            state.ResumeTiming();
        }
        window.open(patients[next++ % patients.size()]);
    }
}

/// One press of the key a row, from the grid's first row downwards.
void rowChanges(benchmark::State &state, const ado::ConnectionPtr &connection, const desk::Patient &patient,
                const char *gridName)
{
    SaleWindow window(connection);
    window.open(patient);
    controls::RecordsetGrid &grid = window.grid(gridName);
    grid.setFocus();
    QTest::keyClick(&grid, Qt::Key_Home);
    untilPainted();
    int row = grid.dataSource()->currentRow();
    for (auto _ : state) {
        QTest::keyClick(&grid, Qt::Key_Down);
        untilPainted();
        ++row;
    }
    if (grid.dataSource()->currentRow() != row)
        state.SkipWithError("the rows did not change");
}

void registerRowChanges(const ado::ConnectionPtr &connection, Table &table)
{
    const desk::Patient patient = busiestPatient(*connection);
    const std::pair<const char *, const char *> grids[] = {{"tdbSaleProductLists", "change of product, painted"},
                                                           {"tdbCustSaleMaster", "change of order, painted"}};
    for (const auto &[grid, what] : grids) {
        const std::string name = std::string("row_change/") + grid;
        benchmark::RegisterBenchmark(name.c_str(), [=, grid = grid](benchmark::State &state) {
            rowChanges(state, connection, patient, grid);
        })->Iterations(3 * Steps);
        table.add({what, name, {}, 50});
    }
}

} // namespace

void registerOpening(const OrderedClinic &clinic, Table &table)
{
    const std::vector<desk::Patient> patients = typicalPatients(*clinic.connection);
    const std::string size = "/" + std::to_string(clinic.orders);
    for (const bool windowStands : {false, true}) {
        const std::string name = (windowStands ? "open/next_patient" : "open/new_window") + size;
        benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State &state) {
            openings(state, clinic.connection, patients, windowStands);
        })->Iterations(Steps);
        table.add({windowStands ? "the next patient's sale in the same window" : "open a patient's sale, painted",
                   name,
                   {},
                   30});
    }
}

void registerWindow(const Clinics &clinics, Table &table)
{
    registerOpening(byOrders(clinics).back(), table);
    registerRowChanges(clinics.large, table);
}

} // namespace bench
