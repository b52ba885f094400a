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
    return "kept_" + table + "_" + std::to_string(lngOrdMPK);
}

/// Past the layer where that is possible.
void run(ado::Connection &connection, const std::string &statement)
{
    if (connection.engine() == ado::Engine::SQLite)
        runBare(bareHandle(connection), statement);
    else
        connection.Execute(QString::fromStdString(statement));
}

void keep(ado::Connection &connection, const std::string &memory, const std::string &rows)
{
    run(connection, "DROP TABLE IF EXISTS " + memory);
    run(connection, "CREATE TEMP TABLE " + memory + " AS SELECT " + rows);
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
    for (const OrderTable &table : orderTables)
        keep(*connection_, memoryOf(table.name, lngOrdMPK_), "*" + ofOrder(table, lngOrdMPK_));
    if (connection_->engine() == ado::Engine::SQLite)
        keep(*connection_, memoryOf("keys", lngOrdMPK_), "name, seq FROM main.sqlite_sequence");
}

void OpenSale::restore()
{
    const bool embedded = connection_->engine() == ado::Engine::SQLite;
    run(*connection_, embedded ? "BEGIN IMMEDIATE" : "BEGIN");
    for (const OrderTable &table : orderTables) {
        run(*connection_, "DELETE" + ofOrder(table, lngOrdMPK_));
        run(*connection_, "INSERT INTO " + table.name + " SELECT * FROM " + memoryOf(table.name, lngOrdMPK_));
    }
    if (embedded)
        run(*connection_, "UPDATE main.sqlite_sequence SET seq = (SELECT kept.seq FROM " + memoryOf("keys", lngOrdMPK_)
                              + " AS kept WHERE kept.name = sqlite_sequence.name)");
    run(*connection_, "COMMIT");
    for (const auto *rows : {&session_.rsCustSaleMaster, &session_.rsCustSaleDetails, &session_.rsCustTranManage})
        (*rows)->Requery();
    session_.rsCustSaleMaster->setBookmark(lngOrdMPK_);
}

void OpenSale::removeLedger() const
{
    run(*connection_, "DELETE" + ofOrder(orderTables[2], lngOrdMPK_));
}

std::string OpenSale::rows() const
{
    std::string all;
    for (const OrderTable &table : orderTables) {
        const ado::CellTable rows =
            connection_->read(QString::fromStdString("SELECT *" + ofOrder(table, lngOrdMPK_) + " ORDER BY 1"));
        for (int row = 0; row < rows.rowCount(); ++row) {
            for (int column = 0; column < rows.columnCount(); ++column)
                all.append(rows.raw(row, column).toString().toStdString()).append("|");
            all += '\n';
        }
    }
    return all;
}

} // namespace bench
