#include "bench/ReadBench.h"

#include "bench/StockModel.h"
#include "bench/TypicalPatients.h"
#include "bench/Work.h"
#include "data/clsSQL.h"
#include "money/OutstandingMoney.h"
#include "platform/ado/Recordset.h"
#include "platform/runtime/Conversions.h"

#include <stdexcept>

namespace bench {

namespace {

/// A list as a pane opens it.
struct List
{
    QString statement;
    ado::CursorLocation location = ado::CursorLocation::Server;
};

using Lists = std::vector<List>;

int rowsOf(const ado::ConnectionPtr &connection, const Lists &lists)
{
    int rows = 0;
    for (const List &list : lists) {
        ado::Recordset recordset;
        recordset.setCursorLocation(list.location);
        recordset.Open(list.statement, connection, ado::CursorType::Keyset, ado::LockType::Optimistic);
        // A list is put in order as far as it is looked at.
        if (recordset.rowCount() > 0)
            benchmark::DoNotOptimize(recordset.bookmarkAt(recordset.rowCount() - 1));
        rows += recordset.rowCount();
    }
    return rows;
}

int stockRowsOf(const ado::ConnectionPtr &connection, const Lists &lists)
{
    int rows = 0;
    for (const List &list : lists)
        rows += stockRows(*connection, list.statement);
    return rows;
}

void registerLists(const ado::ConnectionPtr &connection, const std::string &name, const std::string &what,
                   const Lists &lists, double limit, Table &table)
{
    const bool embedded = connection->engine() == ado::Engine::SQLite;
    const int expected = embedded ? stockRowsOf(connection, lists) : rowsOf(connection, lists);
    if (expected < 2 || rowsOf(connection, lists) != expected)
        throw std::runtime_error(name + ": recordsets and models do not read the same");
    Work work{name, what, limit, [=] { benchmark::DoNotOptimize(rowsOf(connection, lists)); }};
    if (embedded)
        work.stock = [=] { benchmark::DoNotOptimize(stockRowsOf(connection, lists)); };
    registerWork(connection, work, table);
}

} // namespace

void registerRead(const OrderedClinic &clinic, Table &table)
{
    const clsSQL sql;
    const int lngCustPK = typicalPatients(*clinic.connection).front().key;
    ado::Recordset orders;
    orders.Open(sql.getOrderMasterSQL(lngCustPK), clinic.connection, ado::CursorType::Static, ado::LockType::ReadOnly);
    const int lngOrdMPK = runtime::CLng(orders[QStringLiteral("OrdM_PK")]);
    const Lists ofOrder{{sql.getOrderDetailSQL(lngOrdMPK)}, {sql.getCustTranSQL(lngCustPK, lngOrdMPK)}};
    Lists ofPatient{{sql.getOrderMasterSQL(lngCustPK)}};
    ofPatient.insert(ofPatient.end(), ofOrder.begin(), ofOrder.end());
    const std::string size = "/" + std::to_string(clinic.orders);
    const std::string among = ", " + grouped(clinic.orders) + " orders";
    registerLists(clinic.connection, "read_patient" + size, "open a patient: orders, lines, ledger" + among, ofPatient,
                  1.2, table);
    registerLists(clinic.connection, "read_order" + size, "another order: lines, ledger" + among, ofOrder, 1.2, table);
    registerLists(clinic.connection, "read_outstanding" + size, "orders with outstanding money, all patients" + among,
                  {{outstanding::listSQL(outstanding::AllCustomers, 0), ado::CursorLocation::Client}}, 1.1, table);
}

} // namespace bench
