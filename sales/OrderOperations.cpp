#include "sales/OrderOperations.h"

#include "data/HeldOrder.h"
#include "data/clsSQL.h"
#include "input/clsNumberRelated.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "sales/clsFunctions.h"
#include "session/modGlobalVars.h"

#include <algorithm>
#include <limits>

using runtime::Currency;
using runtime::RuntimeError;

namespace {

ado::ConnectionPtr &masterDB()
{
    if (!gcnnMasterDB)
        throw RuntimeError(runtime::ErrorNumber::ObjectClosed,
                           QStringLiteral("데이터베이스에 연결되어 있지 않습니다."));
    return gcnnMasterDB;
}

ado::Recordset &opened(const SaleSession::RecordsetPtr &recordset)
{
    if (!recordset || !recordset->isOpen())
        throw RuntimeError(runtime::ErrorNumber::ObjectClosed, QStringLiteral("자료가 열려 있지 않습니다."));
    return *recordset;
}

void requeryIfOpen(const SaleSession::RecordsetPtr &recordset)
{
    if (recordset && recordset->isOpen())
        recordset->Requery();
}

/// Work between begin and commit; an error rolls back and goes on to the caller.
template <typename Work>
void inTransaction(Work &&work)
{
    const ado::ConnectionPtr connection = masterDB();
    connection->BeginTrans();
    try {
        work(*connection);
        connection->CommitTrans();
    } catch (const RuntimeError &) {
        runtime::Attempt undo; // the first error is the one that tells something
        undo([&] { connection->RollbackTrans(); });
        throw;
    }
}

/// The trap around a flow.
template <typename Flow>
Outcome trapped(Flow &&flow)
{
    try {
        return std::forward<Flow>(flow)();
    } catch (const RuntimeError &) {
        return Outcome::Failed;
    }
}

/// The same for what changes an order's lines. A server that is lost may have saved before it went: the lists must tell
/// what it holds now, or the line would be written once more.
template <typename Flow>
Outcome trappedAndShown(SaleSession &session, Flow &&flow)
{
    try {
        return std::forward<Flow>(flow)();
    } catch (const RuntimeError &error) {
        runtime::Attempt show;
        if (error.number() == runtime::ErrorNumber::ConnectionLost) {
            show([&] { requeryIfOpen(session.rsCustSaleMaster); });
            show([&] { requeryIfOpen(session.rsCustSaleDetails); });
            session.linesMayBeStale = show.failed();
        }
        return Outcome::Failed;
    }
}

/// First value of a statement's first row; NULL when it gives no row.
QVariant firstValue(const QString &statement)
{
    ado::Recordset rows;
    rows.Open(statement, masterDB(), ado::CursorType::Static, ado::LockType::ReadOnly);
    return rows.Eof() ? QVariant() : rows.value(rows.fieldNames().constFirst());
}

} // namespace

OrderOperations::OrderOperations(SaleSession &session, Clock today)
    : session_(session)
    , today_(std::move(today))
{
}

bool OrderOperations::foundChangedAfterLoss()
{
    if (!session_.linesMayBeStale)
        return false;
    const auto rowsShown = [this] {
        const auto count = [](const SaleSession::RecordsetPtr &rows) { return rows && rows->isOpen() ? rows->rowCount() : 0; };
        return std::pair(count(session_.rsCustSaleMaster), count(session_.rsCustSaleDetails));
    };
    const auto before = rowsShown();
    runtime::Attempt read; // while the server is still away, the change itself will say so
    read([&] {
        ado::Recordset &orders = opened(session_.rsCustSaleMaster);
        const ado::Bookmark current = orders.bookmark();
        orders.Requery();
        runtime::Attempt stay; // the order may be gone
        stay([&] { orders.setBookmark(current); });
        requeryIfOpen(session_.rsCustSaleDetails);
    });
    session_.linesMayBeStale = read.failed();
    return rowsShown() != before;
}

Outcome OrderOperations::addDetailToNewOrder(const EntryLine &line)
{
    return onNewOrder(today_(), [&](std::int32_t lngOrdMPK) {
        // Here the discount is read as a pure number: an empty field counts as 0.
        const QString statement = insertStatement(lngOrdMPK, line, clsNumberRelated().GetPureNumber(line.unitDiscount));
        onHeldOrder(*masterDB(), lngOrdMPK, [&] { masterDB()->Execute(statement); });
        return recalculate(lngOrdMPK);
    });
}

Outcome OrderOperations::addDetailToSelectedOrder(const EntryLine &line)
{
    return trappedAndShown(session_, [&] {
        const std::int32_t lngOrdMPK = runtime::CLng(opened(session_.rsCustSaleMaster)[QStringLiteral("OrdM_PK")]);
        // Unlike on a new order, the discount goes straight into currency: an empty field fails. It is meant to stay so.
        const QString statement = insertStatement(lngOrdMPK, line, line.unitDiscount);
        onHeldOrder(*masterDB(), lngOrdMPK, [&] { masterDB()->Execute(statement); });
        return recalculate(lngOrdMPK);
    });
}

std::int16_t OrderOperations::countTodayOrders(std::int32_t lngCustPK, const QDate &date)
{
    try {
        const double count = runtime::Val(firstValue(clsSQL().getCountOrderMasterSQL(lngCustPK, date)));
        return static_cast<std::int16_t>(std::min<double>(count, std::numeric_limits<std::int16_t>::max()));
    } catch (const RuntimeError &) {
        return -1;
    }
}

Outcome OrderOperations::addRefundOrderDetail(std::int32_t lngOrdMPK, std::int32_t lngPMPK, Currency curPrice,
                                              std::int16_t intCount, const QString &strMemo)
{
    return trappedAndShown(session_, [&] {
        const QString statement = clsSQL().insDB2RfndOrderDetailSQL(lngOrdMPK, lngPMPK, curPrice, intCount, strMemo);
        onHeldOrder(*masterDB(), lngOrdMPK, [&] { masterDB()->Execute(statement); });
        return recalculate(lngOrdMPK);
    });
}

Outcome OrderOperations::addToNewRefundOrder(const QDate &dtRefund, std::int32_t lngPMPK, Currency curPrice,
                                             std::int16_t intCount, const QString &strMemo)
{
    return onNewOrder(dtRefund, [&](std::int32_t lngOrdMPK) {
        return addRefundOrderDetail(lngOrdMPK, lngPMPK, curPrice, intCount, strMemo);
    });
}

std::int32_t OrderOperations::findOrderByDate(std::int32_t lngCustPK, const QDate &date)
{
    QString statement =
        QStringLiteral("SELECT OrdM_PK FROM tPSORderMaster WHERE Cust_PK = [CUSTPK] AND OrdM_Date = '[ORDMDATE]'");
    statement.replace(QLatin1String("[CUSTPK]"), QString::number(lngCustPK));
    statement.replace(QLatin1String("[ORDMDATE]"), runtime::dateText(date));
    try {
        const QVariant key = firstValue(statement);
        return runtime::isNull(key) ? -1 : runtime::CLng(key);
    } catch (const RuntimeError &) {
        return -1;
    }
}

Outcome OrderOperations::saveOrder(const OrderEdit &edit)
{
    return trapped([&] {
        ado::Recordset &orders = opened(session_.rsCustSaleMaster);
        try {
            inTransaction([&](ado::Connection &) {
                orders.setValue(QStringLiteral("OrdM_Address"), edit.address.trimmed());
                orders.setValue(QStringLiteral("OrdM_Tel"), edit.telephone.trimmed());
                orders.setValue(QStringLiteral("OrdM_Cel"), edit.cell.trimmed());
                orders.setValue(QStringLiteral("OrdM_TakbaeMemo"), edit.takbaeMemo.trimmed());
                orders.setValue(QStringLiteral("OrdM_ETCMemo"), edit.memo.trimmed());
                orders.setValue(QStringLiteral("OrdM_HalinTotal"),
                                QVariant::fromValue(runtime::CCur(edit.discountTotal)));
                orders.setValue(QStringLiteral("OrdM_Misugum"), QVariant::fromValue(runtime::CCur(edit.outstanding)));
                orders.setValue(QStringLiteral("OrdM_Gubun"), edit.takbae ? 2 : 1);
                orders.setValue(QStringLiteral("OrdM_Date"), edit.date);
                orders.Update();
            });
        } catch (const RuntimeError &) {
            runtime::Attempt undo;
            undo([&] { orders.CancelUpdate(); });
            throw;
        }
        return Outcome::Done;
    });
}

Outcome OrderOperations::deleteOrder()
{
    const Outcome outcome = trapped([&] {
        ado::Recordset &orders = opened(session_.rsCustSaleMaster);
        const std::int32_t lngOrdMPK = runtime::CLng(orders[QStringLiteral("OrdM_PK")]);
        const QString details = clsSQL().delCustSaleDetailByOrdMPKSQL(lngOrdMPK);
        const QString ledger = clsSQL().delCustTranSQL(lngOrdMPK, session_.customer.lngCustPK);
        inTransaction([&](ado::Connection &connection) {
            holdOrder(connection, lngOrdMPK);
            connection.Execute(details);
            connection.Execute(ledger);
            orders.Delete();
            orders.Requery();
        });
        return Outcome::Done;
    });
    runtime::Attempt show; // after a failure too: the lists must tell what the database holds
    if (outcome == Outcome::Failed)
        show([&] { requeryIfOpen(session_.rsCustSaleMaster); });
    show([&] { requeryIfOpen(session_.rsCustSaleDetails); });
    show([&] { requeryIfOpen(session_.rsCustTranManage); });
    return show.failed() ? Outcome::Failed : outcome;
}

Outcome OrderOperations::deleteDetail()
{
    return trappedAndShown(session_, [&] {
        opened(session_.rsCustSaleDetails).Delete();
        return recalculate(runtime::CLng(opened(session_.rsCustSaleMaster)[QStringLiteral("OrdM_PK")]));
    });
}

Outcome OrderOperations::onNewOrder(const QDate &date, const std::function<Outcome(std::int32_t lngOrdMPK)> &addLine)
{
    return trappedAndShown(session_, [&] {
        createOrder(date);
        const Outcome outcome = trapped([&] { return addLine(orderKeyOf(date)); });
        // The new order stays behind and is the current one now: the lines on show must be those of the current order.
        if (outcome == Outcome::Failed)
            requeryIfOpen(session_.rsCustSaleMaster);
        return outcome;
    });
}

/// Saved by assignment to the recordset, on its own transaction.
void OrderOperations::createOrder(const QDate &date)
{
    ado::Recordset &orders = opened(session_.rsCustSaleMaster);
    const QVariant nothing = QVariant::fromValue(Currency());
    const Customer &customer = session_.customer;
    try {
        inTransaction([&](ado::Connection &) {
            orders.AddNew();
            orders.setValue(QStringLiteral("Cust_PK"), customer.lngCustPK);
            orders.setValue(QStringLiteral("OrdM_Date"), date);
            orders.setValue(QStringLiteral("OrdM_Gubun"), 1);
            orders.setValue(QStringLiteral("OrdM_Address"), customer.address.trimmed());
            orders.setValue(QStringLiteral("OrdM_Tel"), customer.phone.trimmed());
            orders.setValue(QStringLiteral("OrdM_Cel"), customer.cell.trimmed());
            orders.setValue(QStringLiteral("OrdM_TakbaeMemo"), QStringLiteral(""));
            for (const char *field :
                 {"OrdM_TaxTotal", "OrdM_TaxFreeTotal", "OrdM_HalinTotal", "OrdM_Total", "OrdM_Misugum"})
                orders.setValue(QLatin1String(field), nothing);
            orders.setValue(QStringLiteral("OrdM_ETCMemo"), QStringLiteral(""));
            orders.Update();
        });
    } catch (const RuntimeError &) {
        runtime::Attempt undo;
        undo([&] { orders.CancelUpdate(); });
        throw;
    }
}

/// On a second order of the same day it may be the earlier one's: the first row that the server gives counts.
std::int32_t OrderOperations::orderKeyOf(const QDate &date) const
{
    return runtime::CLng(firstValue(clsSQL().getOrderMasterPKSQL(session_.customer.lngCustPK, date)));
}

/// The price is always that of the product row; the pane's price field only shows it.
QString OrderOperations::insertStatement(std::int32_t lngOrdMPK, const EntryLine &line,
                                         const QString &unitDiscount) const
{
    const ado::Recordset &products = opened(session_.rsSaleProductLists);
    const std::int32_t lngPMPK = runtime::CLng(products[QStringLiteral("PM_PK")]);
    const bool sale = line.intSellType == 0;
    const Currency price = sale ? runtime::CCur(products[QStringLiteral("PM_UnitPrice")]) : Currency();
    const Currency discount = sale ? runtime::CCur(unitDiscount) : Currency();
    return clsSQL().insDB2OrderDetailSQL(lngOrdMPK, lngPMPK, price, discount, runtime::CInt(line.quantity),
                                         line.intSellType);
}

/// Sums the order anew and shows the orders as they now stand.
Outcome OrderOperations::recalculate(std::int32_t lngOrdMPK)
{
    const bool done = clsFunctions().reCalculateOMTotal(masterDB(), lngOrdMPK) == 1;
    opened(session_.rsCustSaleMaster).Requery();
    return done ? Outcome::Done : Outcome::Failed;
}
