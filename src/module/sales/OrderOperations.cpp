#include "sales/OrderOperations.h"

#include "data/Codes.h"
#include "data/HeldOrder.h"
#include "data/RestoreMark.h"
#include "data/ShownReadings.h"
#include "data/WholeWon.h"
#include "data/WonText.h"
#include "data/clsSQL.h"
#include "forms/clsNumberRelated.h"
#include "platform/ado/Foresight.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/Operation.h"
#include "sales/Flow.h"
#include "sales/clsFunctions.h"

#include <QPointer>
#include <QSignalBlocker>

#include <algorithm>
#include <limits>
#include <optional>

using flow::masterDB;
using flow::opened;
using flow::trapped;
using runtime::Currency;
using runtime::RuntimeError;

namespace {

void requeryIfOpen(const SaleSession::RecordsetPtr &recordset)
{
    if (recordset && recordset->isOpen())
        recordset->Requery();
}

/// The row that moves up is current for a moment only. Nobody is told of it: what it would load, or ask the user about, is
/// no part of the flow. Whoever shows the rows reads them anew afterwards.
void deleteUntold(ado::Recordset &rows)
{
    const QSignalBlocker untold(rows);
    rows.Delete();
}

/// Runs a flow that changes lines; an error becomes its outcome. A lost server may have saved before it went: the lists
/// are read again, or the user would add the line twice.
template <typename Flow>
Outcome trappedAndShown(SaleSession &session, Flow &&flow)
{
    try {
        return std::forward<Flow>(flow)();
    } catch (const RuntimeError &error) {
        runtime::trapped();
        runtime::Attempt show;
        if (error.number() == runtime::ErrorNumber::ConnectionLost) {
            show([&] { requeryIfOpen(session.rsCustSaleMaster); });
            show([&] { requeryIfOpen(session.rsCustSaleDetails); });
            session.linesMayBeStale = show.failed();
        }
        return flow::outcomeOf(error);
    }
}

bool isShown(const SaleSession::RecordsetPtr &list, const QString &statement)
{
    return list && list->isOpen() && list->source() == statement;
}

/// Conflict unless the list, where it shows the rows of that statement, shows what is stored.
void requireAsShown(const SaleSession::RecordsetPtr &list, const QString &statement)
{
    if (!isShown(list, statement))
        return;
    ado::Recordset stored;
    stored.Open(statement, masterDB(), ado::CursorType::Static, ado::LockType::ReadOnly);
    bool same = stored.rowCount() == list->rowCount();
    const int columns = int(stored.fieldNames().size());
    for (int row = 0; same && row < stored.rowCount(); ++row) {
        for (int column = 0; same && column < columns; ++column)
            same = stored.valueAt(row, column) == list->valueAt(row, column);
    }
    if (!same)
        ado::raiseConflict();
}

/// The sums that a recalculation writes.
QString sumsStatement(OrderKey order)
{
    return QStringLiteral("SELECT SUM(CASE WHEN p.PM_IsTaxed = 1 THEN (d.OrdD_UnitPrice - d.OrdD_HalinUnit) * "
                          "d.OrdD_Count END) AS taxed, SUM(CASE WHEN p.PM_IsTaxed = 0 THEN (d.OrdD_UnitPrice - "
                          "d.OrdD_HalinUnit) * d.OrdD_Count END) AS taxfree, SUM(d.OrdD_HalinUnit * d.OrdD_Count) AS "
                          "discount FROM tPSOrderDetail d LEFT JOIN tPSProductMaster p ON p.PM_PK = d.PM_PK "
                          "WHERE d.OrdM_PK = ")
           + QString::number(order.number());
}

/// Raises Overflow when the order's lines come to more than currency holds.
void requireSumsFit(OrderKey order)
{
    ado::Recordset sums;
    sums.Open(sumsStatement(order), masterDB(), ado::CursorType::Static, ado::LockType::ReadOnly);
    const auto sum = [&](const char *column) {
        const QVariant money = sums[QLatin1String(column)];
        return runtime::isNull(money) ? Currency() : runtime::CCur(money);
    };
    sum("discount");
    sum("taxed") + sum("taxfree");
}

QString orderByDateStatement(CustomerKey customer, const QDate &date)
{
    QString statement =
        QStringLiteral("SELECT OrdM_PK FROM tPSORderMaster WHERE Cust_PK = [CUSTPK] AND OrdM_Date = '[ORDMDATE]'");
    statement.replace(QLatin1String("[CUSTPK]"), QString::number(customer.number()));
    return statement.replace(QLatin1String("[ORDMDATE]"), runtime::dateText(date));
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
        const auto count = [](const SaleSession::RecordsetPtr &rows) {
            return rows && rows->isOpen() ? rows->rowCount() : 0;
        };
        return std::pair(count(session_.rsCustSaleMaster), count(session_.rsCustSaleDetails));
    };
    const auto before = rowsShown();
    runtime::Attempt read; // if the server is still away, adding the line reports it
    read([&] {
        ado::Recordset &orders = opened(session_.rsCustSaleMaster);
        orders.requeryAt(orders.bookmark());
        requeryIfOpen(session_.rsCustSaleDetails);
    });
    session_.linesMayBeStale = read.failed();
    return rowsShown() != before;
}

void OrderOperations::takeCurrentProduct(EntryLine &line) const
{
    const ado::Recordset &products = opened(session_.rsSaleProductLists);
    line.product = ProductKey(products[QStringLiteral("PM_PK")]);
    line.name = runtime::text(products[QStringLiteral("PM_Name")]);
    line.unitPrice = products[QStringLiteral("PM_UnitPrice")];
}

QString OrderOperations::totalShown(OrderKey order) const
{
    QString total = QStringLiteral("-");
    runtime::Attempt read(runtime::Attempt::Failure::IsAnswer); // another desk deleted the order
    read([&] {
        const ado::Recordset &orders = opened(session_.rsCustSaleMaster);
        const int column = orders.columnIndex(QStringLiteral("OrdM_Total"));
        for (int row = 0; row < orders.rowCount(); ++row) {
            if (OrderKey(orders.bookmarkAt(row)) == order)
                total = wonText(runtime::CCur(orders.valueAt(row, column)));
        }
    });
    return total;
}

ShownOrder OrderOperations::currentOrder() const
{
    const bool current = SaleSession::hasCurrent(session_.rsCustSaleMaster) && !session_.rsCustSaleMaster->isGone();
    return current ? shownOrder(*session_.rsCustSaleMaster) : ShownOrder();
}

Outcome OrderOperations::addDetailToNewOrder(const EntryLine &line)
{
    const runtime::Operation operation("add line to new order", {{"product", line.product.number()}});
    return onNewOrder(today_(), [&](const ShownOrder &order) {
        // Quirk (docs/architecture.md): only on a new order does an empty discount count as 0.
        return addLine(order, line.product,
                       insertStatement(order.key, line, clsNumberRelated().GetPureNumber(line.unitDiscount)),
                       Shown::OnceMore);
    });
}

Outcome OrderOperations::addDetailToSelectedOrder(const ShownOrder &order, const EntryLine &line)
{
    const runtime::Operation operation("add line", {{"order", order.number()}, {"product", line.product.number()}});
    return trappedAndShown(session_, [&] {
        // Quirk (docs/architecture.md): the discount goes straight into currency, so an empty field fails.
        return addLine(order, line.product, insertStatement(order.key, line, line.unitDiscount), Shown::OnceMore);
    });
}

qint16 OrderOperations::countTodayOrders(CustomerKey customer, const QDate &date)
{
    const runtime::Operation operation("count orders", {{"customer", customer.number()}});
    try {
        const double count = runtime::Val(firstValue(clsSQL().getCountOrderMasterSQL(customer.number(), date)));
        return static_cast<qint16>(std::min<double>(count, std::numeric_limits<qint16>::max()));
    } catch (const RuntimeError &) {
        runtime::trapped();
        return -1;
    }
}

Outcome OrderOperations::addRefundOrderDetail(const ShownOrder &order, ProductKey product, Currency curPrice,
                                              qint16 intCount, const QString &strMemo)
{
    const runtime::Operation operation("add return", {{"order", order.number()}, {"product", product.number()}});
    return trappedAndShown(session_, [&] {
        return addLine(
            order, product,
            clsSQL().insDB2RfndOrderDetailSQL(order.number(), product.number(), wholeWon(curPrice), intCount, strMemo),
            Shown::Here);
    });
}

Outcome OrderOperations::addToNewRefundOrder(const QDate &dtRefund, ProductKey product, Currency curPrice,
                                             qint16 intCount, const QString &strMemo)
{
    return onNewOrder(dtRefund, [&](const ShownOrder &order) {
        return addRefundOrderDetail(order, product, curPrice, intCount, strMemo);
    });
}

void OrderOperations::tellOrderByDate(ado::Foresight &next, CustomerKey customer, const QDate &date)
{
    next.open(orderByDateStatement(customer, date), ado::CursorType::Static);
}

OrderKey OrderOperations::findOrderByDate(CustomerKey customer, const QDate &date)
{
    const runtime::Operation operation("find order", {{"customer", customer.number()}});
    try {
        const QVariant key = firstValue(orderByDateStatement(customer, date));
        return runtime::isNull(key) ? OrderKey() : OrderKey(key);
    } catch (const RuntimeError &) {
        runtime::trapped();
        return {};
    }
}

Outcome OrderOperations::deleteOrder(const ShownOrder &order)
{
    const runtime::Operation operation("delete order", {{"order", order.number()}});
    const QPointer<SaleSession> alive(&session_); // a row that is shown may open a box
    ado::Foresight shown(gcnnMasterDB, ado::Foresight::Behind::Commit);
    const Outcome outcome = trapped([&] {
        ado::Recordset &orders = opened(session_.rsCustSaleMaster);
        const QString details = clsSQL().delCustSaleDetailByOrdMPKSQL(order.number());
        const QString ledger = clsSQL().delCustTranSQL(order.number(), session_.customer.lngCustPK);
        flow::inTransaction([&](ado::Connection &connection) {
            holdAsShown(connection, order);
            if (!orders.moveToKey(order.key.bookmark()))
                ado::raiseConflict();
            connection.Execute(QStringList{details, ledger});
            ado::Foresight next(masterDB());
            shownReadings::tellOrdersWithoutCurrent(next, orders, session_.customer.lngCustPK);
            deleteUntold(orders);
            orders.Requery();
            if (const ShownOrder now = currentOrder()) {
                shownReadings::tellLines(shown, now.number());
                shownReadings::tellLedger(shown, now.customer.number(), now.number());
                shownReadings::tellBalance(shown, now.customer.number(), now.number());
            }
        });
        return Outcome::Done;
    });
    runtime::Attempt show; // after a failure too: the lists must tell what the database holds
    const auto read = [&](SaleSession::RecordsetPtr SaleSession::*list) {
        if (alive)
            show([&] { requeryIfOpen(*alive.*list); });
    };
    if (outcome == Outcome::Failed)
        read(&SaleSession::rsCustSaleMaster);
    read(&SaleSession::rsCustSaleDetails);
    read(&SaleSession::rsCustTranManage);
    if (alive && show.failed())
        alive->linesMayBeStale = true; // which is no failure of the deletion
    return outcome;
}

/// With its lines and its ledger, as far as the window shows them.
void OrderOperations::holdAsShown(ado::Connection &connection, const ShownOrder &order) const
{
    const QString ledgerTable = QStringLiteral("tPSTransaction"), orderOfRow = QStringLiteral("tpstrans_OrderM_PK");
    const QString lines = clsSQL().getOrderDetailSQL(order.number());
    const QString rows = clsSQL().getCustTranSQL(session_.customer.lngCustPK, order.number());
    ado::Foresight next(masterDB());
    next.hold(ledgerTable, orderOfRow, order.number());
    if (isShown(session_.rsCustSaleDetails, lines))
        next.open(lines, ado::CursorType::Static);
    if (isShown(session_.rsCustTranManage, rows))
        next.open(rows, ado::CursorType::Static);
    holdOrder(connection, order);
    // A ledger row is deleted without its order being held: not between this look and the deletion.
    connection.holdRow(ledgerTable, orderOfRow, order.number());
    requireAsShown(session_.rsCustSaleDetails, lines);
    requireAsShown(session_.rsCustTranManage, rows);
}

Outcome OrderOperations::deleteDetail(OrderKey order, LineKey line)
{
    const runtime::Operation operation("delete line", {{"order", order.number()}, {"line", line.number()}});
    return trappedAndShown(session_, [&] {
        ado::Recordset &details = opened(session_.rsCustSaleDetails);
        flow::inTransaction([&](ado::Connection &connection) {
            holdOrder(connection, {order, session_.customer.key(), {}});
            holdLine(connection, line, order);
            if (!details.moveToKey(line.bookmark()))
                ado::raiseConflict();
            deleteUntold(details);
        });
        return recalculate(order, Shown::Here);
    });
}

Outcome OrderOperations::onNewOrder(const QDate &date, const std::function<Outcome(const ShownOrder &)> &addLine)
{
    return trappedAndShown(session_, [&] {
        std::optional<ado::Foresight> found(std::in_place, masterDB(), ado::Foresight::Behind::Commit);
        found->open(orderStatement(date), ado::CursorType::Static);
        createOrder(date);
        const Outcome outcome = trapped([&] {
            const ShownOrder order = orderOf(date);
            found.reset();
            return addLine(order);
        });
        // The new order stays and is the current one now: the requery makes the lines shown its own.
        if (hasFailed(outcome))
            requeryIfOpen(session_.rsCustSaleMaster);
        return outcome;
    });
}

/// Adds the order through the recordset, in a transaction of its own.
void OrderOperations::createOrder(const QDate &date)
{
    const runtime::Operation operation("create order", {{"customer", session_.customer.lngCustPK}});
    ado::Recordset &orders = opened(session_.rsCustSaleMaster);
    const QVariant nothing = QVariant::fromValue(Currency());
    const Customer &customer = session_.customer;
    try {
        const ado::ConnectionPtr connection = masterDB();
        ado::Transaction transaction(*connection);
        restoreMark::require(*connection); // the customer may be gone
        orders.AddNew();
        orders.setValue(QStringLiteral("Cust_PK"), customer.lngCustPK);
        orders.setValue(QStringLiteral("OrdM_Date"), date);
        orders.setValue(QStringLiteral("OrdM_Gubun"), int(sale::PickUp));
        orders.setValue(QStringLiteral("OrdM_Address"), runtime::Trim(customer.address));
        orders.setValue(QStringLiteral("OrdM_Tel"), runtime::Trim(customer.phone));
        orders.setValue(QStringLiteral("OrdM_Cel"), runtime::Trim(customer.cell));
        orders.setValue(QStringLiteral("OrdM_TakbaeMemo"), QStringLiteral(""));
        for (const char *field :
             {"OrdM_TaxTotal", "OrdM_TaxFreeTotal", "OrdM_HalinTotal", "OrdM_Total", "OrdM_Misugum"})
            orders.setValue(QLatin1String(field), nothing);
        orders.setValue(QStringLiteral("OrdM_ETCMemo"), QStringLiteral(""));
        transaction.commitWith(orders);
    } catch (const RuntimeError &) {
        runtime::Attempt undo;
        undo([&] { orders.CancelUpdate(); });
        throw;
    }
}

/// Quirk (docs/architecture.md): the first order of the day that the server gives, perhaps an earlier one than the new.
ShownOrder OrderOperations::orderOf(const QDate &date) const
{
    return {OrderKey(firstValue(orderStatement(date))), session_.customer.key(), date};
}

QString OrderOperations::orderStatement(const QDate &date) const
{
    return clsSQL().getOrderMasterPKSQL(session_.customer.lngCustPK, date);
}

/// The price is always that of the product row; the pane's price field only shows it.
QString OrderOperations::insertStatement(OrderKey order, const EntryLine &line, const QString &unitDiscount) const
{
    const bool sold = line.intSellType == sale::NormalSale;
    const Currency price = sold ? wholeWon(runtime::CCur(line.unitPrice)) : Currency();
    const Currency discount = sold ? wholeWon(runtime::CCur(unitDiscount)) : Currency();
    return clsSQL().insDB2OrderDetailSQL(order.number(), line.product.number(), price, discount,
                                         runtime::CInt(line.quantity), line.intSellType);
}

/// Adds a line by its statement, unless the product is gone: its amount would be missing from the order's total. One that
/// makes the order's sums too large for currency is not saved either.
Outcome OrderOperations::addLine(const ShownOrder &order, ProductKey product, const QString &statement, Shown shown)
{
    bool there = false;
    ado::Foresight held(masterDB());
    tellProductHeld(held, product);
    onHeldOrder(*masterDB(), order, [&] {
        there = productIsHeld(*masterDB(), product);
        if (!there)
            return;
        ado::Foresight next(masterDB());
        next.open(sumsStatement(order.key), ado::CursorType::Static);
        masterDB()->Execute(statement);
        requireSumsFit(order.key);
    });
    return there ? recalculate(order.key, shown) : Outcome::ProductGone;
}

/// Sums the order anew and shows the orders as they now stand.
Outcome OrderOperations::recalculate(OrderKey order, Shown shown)
{
    lastOrder_ = order;
    ado::Foresight next(gcnnMasterDB, ado::Foresight::Behind::Commit);
    for (int reading = 0; session_.rsCustSaleMaster && reading < (shown == Shown::Here ? 1 : 2); ++reading)
        shownReadings::tellOrders(next, *session_.rsCustSaleMaster, session_.customer.lngCustPK);
    const bool done = clsFunctions().reCalculateOMTotal(masterDB(), order.number()) == 1;
    runtime::Attempt show; // what is saved stays so when the list cannot be read
    show([&] { opened(session_.rsCustSaleMaster).Requery(); });
    session_.linesMayBeStale = session_.linesMayBeStale || show.failed();
    return done ? Outcome::Done : Outcome::Failed;
}
