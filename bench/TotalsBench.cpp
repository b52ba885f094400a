#include "bench/TotalsBench.h"

#include "bench/BareStatement.h"
#include "data/clsSQL.h"
#include "sales/clsFunctions.h"

#include <array>
#include <stdexcept>

namespace bench {

namespace {

/// The statements of one order, written beforehand.
struct OrderTexts
{
    qint32 lngOrdMPK;
    std::string taxTotal;
    std::string taxFreeTotal;
    std::string discountTotal;
};

using Totals = std::array<sqlite3_int64, 4>;

std::vector<OrderTexts> someOrders(sqlite3 *handle)
{
    constexpr int every = 9'973;
    std::vector<OrderTexts> orders;
    BareStatement keys(handle, "SELECT OrdM_PK FROM tPSOrderMaster WHERE OrdM_PK % " + std::to_string(every) + " = 1");
    const clsSQL sql;
    while (keys.step()) {
        const auto key = static_cast<qint32>(keys.integer(0));
        orders.push_back({key, sql.getSumTaxOrTaxFreeTotalSQL(key, true).toStdString(),
                          sql.getSumTaxOrTaxFreeTotalSQL(key, false).toStdString(),
                          sql.getSumHalinTotalSQL(key).toStdString()});
    }
    return orders;
}

sqlite3_int64 firstInteger(sqlite3 *handle, const std::string &text)
{
    BareStatement statement(handle, text);
    return statement.step() ? statement.integer(0) : 0;
}

void recalculateBare(sqlite3 *handle, const OrderTexts &order)
{
    const sqlite3_int64 taxed = firstInteger(handle, order.taxTotal);
    const sqlite3_int64 taxFree = firstInteger(handle, order.taxFreeTotal);
    const sqlite3_int64 discount = firstInteger(handle, order.discountTotal);
    runBare(handle, "UPDATE tPSOrderMaster SET OrdM_TaxTotal=" + std::to_string(taxed) + ", OrdM_TaxFreeTotal="
                        + std::to_string(taxFree) + ", OrdM_HalinTotal=" + std::to_string(discount) + ", OrdM_Total="
                        + std::to_string(taxed + taxFree) + " WHERE OrdM_PK = " + std::to_string(order.lngOrdMPK));
}

Totals storedTotals(sqlite3 *handle, qint32 lngOrdMPK)
{
    BareStatement row(handle, "SELECT OrdM_TaxTotal, OrdM_TaxFreeTotal, OrdM_HalinTotal, OrdM_Total FROM tPSOrderMaster"
                              " WHERE OrdM_PK = "
                                  + std::to_string(lngOrdMPK));
    row.step();
    return {row.integer(0), row.integer(1), row.integer(2), row.integer(3)};
}

/// Both ways store the same totals over wrong ones.
void checkSame(ado::ConnectionPtr connection, const std::vector<OrderTexts> &orders)
{
    sqlite3 *const handle = bareHandle(*connection);
    const auto spoil = [&](qint32 key) {
        runBare(handle, "UPDATE tPSOrderMaster SET OrdM_TaxTotal=-1, OrdM_TaxFreeTotal=-1, OrdM_HalinTotal=-1,"
                        " OrdM_Total=-1 WHERE OrdM_PK = "
                            + std::to_string(key));
    };
    for (const OrderTexts &order : orders) {
        spoil(order.lngOrdMPK);
        recalculateBare(handle, order);
        const Totals bare = storedTotals(handle, order.lngOrdMPK);
        spoil(order.lngOrdMPK);
        const bool done = clsFunctions().reCalculateOMTotal(connection, order.lngOrdMPK) == 1;
        if (!done || storedTotals(handle, order.lngOrdMPK) != bare || bare == Totals{-1, -1, -1, -1})
            throw std::runtime_error("totals: component and bare API do not store the same");
    }
}

/// Runs the work for one order after another; `held` keeps all of it in one transaction, which leaves out the disk.
template <typename Work>
void overOrders(benchmark::State &state, sqlite3 *handle, const std::vector<OrderTexts> &orders, bool held, Work work)
{
    if (held)
        runBare(handle, "BEGIN IMMEDIATE");
    std::size_t next = 0;
    for (auto _ : state)
        work(orders[next++ % orders.size()]);
    if (held)
        runBare(handle, "COMMIT");
}

} // namespace

void registerTotals(const Clinics &clinics, Table &table)
{
    const ado::ConnectionPtr connection = clinics.large;
    const std::vector<OrderTexts> orders = someOrders(bareHandle(*connection));
    checkSame(connection, orders);
    for (const bool held : {false, true}) {
        const std::string name = held ? "totals_without_commit" : "totals";
        benchmark::RegisterBenchmark((name + "/component").c_str(), [=](benchmark::State &state) {
            ado::ConnectionPtr lent = connection;
            overOrders(state, bareHandle(*connection), orders, held,
                       [&](const OrderTexts &order) { clsFunctions().reCalculateOMTotal(lent, order.lngOrdMPK); });
        })->UseRealTime();
        benchmark::RegisterBenchmark((name + "/bare").c_str(), [=](benchmark::State &state) {
            sqlite3 *const handle = bareHandle(*connection);
            overOrders(state, handle, orders, held, [&](const OrderTexts &order) { recalculateBare(handle, order); });
        })->UseRealTime();
        table.add({held ? "the same, commit left out" : "recalculate an order's totals", name + "/component",
                   name + "/bare", held ? 0 : 1.2});
    }
}

} // namespace bench
