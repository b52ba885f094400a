#include "data/HeldOrder.h"

#include "data/OneStep.h"
#include "data/RestoreMark.h"
#include "data/StatementText.h"

namespace {

const QString orderTable = QStringLiteral("tPSOrderMaster");
const QString orderKey = QStringLiteral("OrdM_PK");
const QString lineTable = QStringLiteral("tPSOrderDetail");
const QString lineKey = QStringLiteral("OrdD_PK");
const QString productTable = QStringLiteral("tPSProductMaster");
const QString productKey = QStringLiteral("PM_PK");

QString also(const char *column, qint32 value)
{
    return QStringLiteral(" AND %1 = %2").arg(QLatin1String(column), statement::number(value));
}

void require(bool held)
{
    if (!held)
        ado::raiseConflict();
}

} // namespace

bool orderIsHeld(ado::Connection &connection, qint32 lngOrdMPK)
{
    return connection.holdRow(orderTable, orderKey, lngOrdMPK);
}

void holdOrder(ado::Connection &connection, const ShownOrder &order)
{
    QString shown = also("Cust_PK", order.customer.number());
    if (order.date.isValid())
        shown += QStringLiteral(" AND OrdM_Date = ") + statement::quotedDate(order.date);
    shown += restoreMark::unchangedCondition(connection);
    const bool held = connection.holdRow(orderTable, orderKey, order.number(), shown);
    if (!held)
        restoreMark::require(connection); // says why, if that is it
    require(held);
}

void holdLine(ado::Connection &connection, LineKey line, OrderKey order)
{
    require(connection.holdRow(lineTable, lineKey, line.number(), also("OrdM_PK", order.number())));
}

void tellLineHeld(ado::Foresight &next, LineKey line, OrderKey order)
{
    next.hold(lineTable, lineKey, line.number(), also("OrdM_PK", order.number()));
}

void holdLedgerRow(ado::Connection &connection, LedgerKey row, const ShownOrder &order)
{
    require(connection.holdRow(QStringLiteral("tPSTransaction"), QStringLiteral("tpstrans_PK"), row.number(),
                               also("tpstrans_OrderM_PK", order.number())
                                   + also("tpstrans_Customer_PK", order.customer.number())));
}

bool productIsHeld(ado::Connection &connection, ProductKey product)
{
    return connection.holdRow(productTable, productKey, product.number());
}

void tellProductHeld(ado::Foresight &next, ProductKey product)
{
    next.hold(productTable, productKey, product.number());
}

bool dealerIsHeld(ado::Connection &connection, DealerKey dealer)
{
    return connection.holdRow(QStringLiteral("tPSCompanyMaster"), QStringLiteral("CM_PK"), dealer.number());
}

void inOneStep(ado::Connection &connection, const std::function<void()> &work)
{
    OneStep step(connection);
    work();
    step.end();
}

void onHeldOrder(ado::Connection &connection, const ShownOrder &order, const std::function<void()> &work)
{
    inOneStep(connection, [&] {
        holdOrder(connection, order);
        work();
    });
}
