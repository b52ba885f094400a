#include "bench/NamesBench.h"

#include "bench/BareStatement.h"
#include "bench/SaleWindow.h"
#include "bench/TypicalPatients.h"
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
        pane_ = &window_.pane<DetailPane>();
        pane_->loadCustSaleDetails(order.lngOrdMPK);
        untilPainted();
    }

    /// Drops the names that are known and asks for those of the rows on show, as the grid does while it paints.
    std::size_t fill() const
    {
        pane_->rebind();
        const int height = grid().viewport()->height();
        const int last = grid().rowAt(height - 1);
        return lengthOf(grid().rowAt(0), last < 0 ? grid().model()->rowCount() - 1 : last);
    }
    /// The same for all lines, as when somebody looks through all of them.
    std::size_t fillAll() const
    {
        pane_->rebind();
        return lengthOf(0, grid().model()->rowCount() - 1);
    }
    void paint() const
    {
        pane_->rebind();
        grid().viewport()->repaint();
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
    std::size_t lengthOf(int first, int last) const
    {
        std::size_t length = 0;
        for (int row = first; row <= last; ++row)
            length += std::size_t(grid().model()->index(row, NameColumn).data().toString().size());
        return length;
    }
    controls::RecordsetGrid &grid() const { return *pane_->tdbCustSaleDetails(); }

    SaleWindow window_;
    DetailPane *pane_ = nullptr;
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

    const auto measure = [&](const char *name, auto fill) {
        benchmark::RegisterBenchmark(name, [=](benchmark::State &state) {
            const LinesOnShow lines(connection, order);
            for (auto _ : state)
                fill(lines);
        });
    };
    measure("names/shown", [](const LinesOnShow &lines) { benchmark::DoNotOptimize(lines.fill()); });
    measure("names/all", [](const LinesOnShow &lines) { benchmark::DoNotOptimize(lines.fillAll()); });
    measure("names/painted", [](const LinesOnShow &lines) { lines.paint(); });
    benchmark::RegisterBenchmark("names/bare", [=](benchmark::State &state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(namesBare(handle, statements).size());
    });
    table.add({"product names of an order of 200 lines, as its grid asks for them", "names/shown", "names/bare", 0.6});
    table.add({"the same, all 200 looked through", "names/all", "names/bare", 0.6});
    table.add({"the same as the first, grid painted", "names/painted", {}, 0});
}

} // namespace bench
