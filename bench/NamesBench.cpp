#include "bench/NamesBench.h"

#include "bench/BareStatement.h"
#include "bench/Patients.h"
#include "bench/SaleWindow.h"
#include "sales/DetailPane.h"

#include <memory>

namespace bench {

namespace {

constexpr int NameColumn = 2;

/// The sale window with the order's lines on show.
class LinesOnShow
{
public:
    LinesOnShow(const ado::ConnectionPtr &connection, const LongOrder &order)
        : window_(connection)
    {
        window_.open(order.patient);
        window_.pane<DetailPane>().loadCustSaleDetails(order.lngOrdMPK);
        untilPainted();
    }

    /// Drops the names that are known and paints the grid, which asks for those it shows.
    void fill() const
    {
        window_.pane<DetailPane>().rebind();
        grid().viewport()->repaint();
    }
    /// The same, then the names of all lines, as when somebody looks through all of them.
    std::size_t fillAll() const
    {
        fill();
        std::size_t length = 0;
        const QAbstractItemModel &model = *grid().model();
        for (int row = 0; row < model.rowCount(); ++row)
            length += std::size_t(model.index(row, NameColumn).data().toString().size());
        return length;
    }
    std::string names() const
    {
        std::string names;
        const QAbstractItemModel &model = *grid().model();
        for (int row = 0; row < model.rowCount(); ++row)
            names += model.index(row, NameColumn).data().toString().toStdString() + '\n';
        return names;
    }

private:
    controls::RecordsetGrid &grid() const { return window_.grid("tdbCustSaleDetails"); }

    SaleWindow window_;
};

std::vector<std::string> lookUps(sqlite3 *handle, int lngOrdMPK)
{
    std::vector<std::string> statements;
    BareStatement lines(handle, "SELECT PM_PK FROM tPSOrderDetail WHERE OrdM_PK = " + std::to_string(lngOrdMPK)
                            + " ORDER BY OrdD_PK DESC");
    while (lines.step())
        statements.push_back("SELECT PM_Catagory, PM_Name FROM tPSProductMaster WHERE PM_PK = "
                             + std::to_string(lines.integer(0)));
    return statements;
}

std::string namesBare(sqlite3 *handle, const std::vector<std::string> &statements)
{
    std::string names;
    for (const std::string &statement : statements) {
        BareStatement product(handle, statement);
        if (product.step())
            names += product.text(1);
        names += '\n';
    }
    return names;
}

} // namespace

void registerNames(const Clinics &clinics, Table &table)
{
    const ado::ConnectionPtr connection = clinics.large;
    const LongOrder order = longOrder(*connection);
    sqlite3 *const handle = bareHandle(*connection);
    const std::vector<std::string> statements = lookUps(handle, order.lngOrdMPK);
    if (LinesOnShow(connection, order).names() != namesBare(handle, statements))
        throw std::runtime_error("names: grid and bare API do not show the same");

    benchmark::RegisterBenchmark("names/grid", [=](benchmark::State &state) {
        const LinesOnShow lines(connection, order);
        for (auto _ : state)
            lines.fill();
    });
    benchmark::RegisterBenchmark("names/all", [=](benchmark::State &state) {
        const LinesOnShow lines(connection, order);
        for (auto _ : state)
            benchmark::DoNotOptimize(lines.fillAll());
    });
    benchmark::RegisterBenchmark("names/bare", [=](benchmark::State &state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(namesBare(handle, statements).size());
    });
    table.add({"product names of 200 lines, painted", "names/grid", "names/bare", 0.6});
    table.add({"the same, all lines looked through", "names/all", "names/bare", 0});
}

} // namespace bench
