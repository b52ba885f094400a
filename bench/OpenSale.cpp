#include "bench/OpenSale.h"

#include "bench/BareStatement.h"
#include "data/clsSQL.h"
#include "platform/runtime/Conversions.h"

namespace bench {

namespace {

struct OrderTable
{
    std::string name;
    std::string orderColumn;
};

const OrderTable orderTables[] = {
    {"tPSOrderMaster", "OrdM_PK"}, {"tPSOrderDetail", "OrdM_PK"}, {"tPSTransaction", "tpstrans_OrderM_PK"}};

std::string ofOrder(const OrderTable &table, int lngOrdMPK)
{
    return " FROM " + table.name + " WHERE " + table.orderColumn + " = " + std::to_string(lngOrdMPK);
}

/// Bears the order's key, so that several may be remembered.
std::string memoryOf(const std::string &table, int lngOrdMPK)
{
    return "temp.kept_" + table + "_" + std::to_string(lngOrdMPK);
}

ado::Recordset &open(SaleSession::RecordsetPtr &rows, const QString &statement, const ado::ConnectionPtr &connection,
                     ado::CursorType cursor, ado::LockType lock)
{
    rows = std::make_unique<ado::Recordset>();
    rows->Open(statement, connection, cursor, lock);
    return *rows;
}

} // namespace

OpenSale::OpenSale(const ado::ConnectionPtr &connection, const desk::Patient &patient)
    : connection_(connection)
{
    using ado::CursorType;
    using ado::LockType;
    session_.customer.lngCustPK = patient.key;
    const clsSQL sql;
    const ado::Recordset &orders = open(session_.rsCustSaleMaster, sql.getOrderMasterSQL(patient.key), connection,
                                        CursorType::Keyset, LockType::Optimistic);
    lngOrdMPK_ = runtime::CLng(orders[QStringLiteral("OrdM_PK")]);
    open(session_.rsCustSaleDetails, sql.getOrderDetailSQL(lngOrdMPK_), connection, CursorType::Keyset,
         LockType::Optimistic);
    open(session_.rsCustTranManage, sql.getCustTranSQL(patient.key, lngOrdMPK_), connection, CursorType::Keyset,
         LockType::Optimistic);
    open(session_.rsSaleProductLists, sql.getProductMasterSQL(false), connection, CursorType::Static,
         LockType::ReadOnly);
    remember();
}

void OpenSale::remember() const
{
    sqlite3 *const handle = bareHandle(*connection_);
    for (const OrderTable &table : orderTables) {
        const std::string memory = memoryOf(table.name, lngOrdMPK_);
        runBare(handle, "DROP TABLE IF EXISTS " + memory);
        runBare(handle, "CREATE TEMP TABLE " + memory.substr(5) + " AS SELECT *" + ofOrder(table, lngOrdMPK_));
    }
    const std::string keys = memoryOf("keys", lngOrdMPK_);
    runBare(handle, "DROP TABLE IF EXISTS " + keys);
    runBare(handle, "CREATE TEMP TABLE " + keys.substr(5) + " AS SELECT name, seq FROM main.sqlite_sequence");
}

void OpenSale::restore()
{
    sqlite3 *const handle = bareHandle(*connection_);
    runBare(handle, "BEGIN IMMEDIATE");
    for (const OrderTable &table : orderTables) {
        runBare(handle, "DELETE" + ofOrder(table, lngOrdMPK_));
        runBare(handle, "INSERT INTO main." + table.name + " SELECT * FROM " + memoryOf(table.name, lngOrdMPK_));
    }
    runBare(handle, "UPDATE main.sqlite_sequence SET seq = (SELECT kept.seq FROM " + memoryOf("keys", lngOrdMPK_)
                        + " AS kept WHERE kept.name = sqlite_sequence.name)");
    runBare(handle, "COMMIT");
    for (const auto *rows : {&session_.rsCustSaleMaster, &session_.rsCustSaleDetails, &session_.rsCustTranManage})
        (*rows)->Requery();
    session_.rsCustSaleMaster->setBookmark(lngOrdMPK_);
}

void OpenSale::removeLedger() const
{
    runBare(bareHandle(*connection_), "DELETE" + ofOrder(orderTables[2], lngOrdMPK_));
}

std::string OpenSale::rows() const
{
    std::string all;
    for (const OrderTable &table : orderTables) {
        BareStatement rows(bareHandle(*connection_), "SELECT *" + ofOrder(table, lngOrdMPK_) + " ORDER BY 1");
        while (rows.step()) {
            for (int column = 0; column < rows.columns(); ++column)
                all.append(rows.text(column)).append("|");
            all += '\n';
        }
    }
    return all;
}

} // namespace bench
