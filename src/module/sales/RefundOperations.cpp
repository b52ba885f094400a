#include "sales/RefundOperations.h"

#include "data/StatementText.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Operation.h"
#include "sales/Flow.h"

namespace {

/// The remark of the return row: what was sold, at which price, and why it came back.
QString remarkOf(const SoldLine &sold, const Refund &refund)
{
    return statement::fill(u"▷판매날짜([SALEDATE]), 물품이름([UNITNAME]), 개당가격([UNITPRICE]), 갯수([UNITCOUNT]), "
                           u"할인가격([UNITDISCOUNT]) 의(중) 반품. 메모: [RFNDMEMO]",
                           {{u"[SALEDATE]", runtime::text(sold.date)},
                            {u"[UNITNAME]", sold.name},
                            {u"[UNITPRICE]", statement::amount(sold.unitPrice)},
                            {u"[UNITCOUNT]", statement::number(sold.count)},
                            {u"[UNITDISCOUNT]", statement::amount(sold.unitDiscount)},
                            {u"[RFNDMEMO]", refund.memo}});
}

/// The note on the sold line; the quantity keeps its minus sign.
QString noteOf(const Refund &refund)
{
    return statement::fill(
        u"▶[RFNDDATE]일 ([RFNDUNITCOUNT])개 반품",
        {{u"[RFNDDATE]", runtime::text(refund.date)}, {u"[RFNDUNITCOUNT]", statement::number(refund.count)}});
}

runtime::Currency moneyOf(const QVariant &value)
{
    return runtime::isNull(value) ? runtime::Currency() : runtime::CCur(value);
}

} // namespace

RefundOperations::RefundOperations(SaleSession &session)
    : session_(session)
    , orders_(session)
{
}

SoldLine RefundOperations::currentLine() const
{
    const ado::Recordset &details = *session_.rsCustSaleDetails;
    SoldLine line;
    line.customer = session_.customer.key();
    line.line = LineKey(details[QStringLiteral("OrdD_PK")]);
    line.product = ProductKey(details[QStringLiteral("PM_PK")]);
    line.name = ProductNames().name(line.product.number());
    line.unitPrice = moneyOf(details[QStringLiteral("OrdD_UnitPrice")]);
    line.unitDiscount = moneyOf(details[QStringLiteral("OrdD_HalinUnit")]);
    line.count = runtime::CInt(details[QStringLiteral("OrdD_Count")]);
    line.date = session_.rsCustSaleMaster->value(QStringLiteral("OrdM_Date")).toDate();
    return line;
}

Outcome RefundOperations::takeBack(const SoldLine &sold, const Refund &refund)
{
    const runtime::Operation operation("take back", {{"line", sold.line.number()}, {"product", sold.product.number()}});
    return flow::trapped([&] {
        noteOnLine(sold.line, refund);
        return addRow(sold, refund);
    });
}

/// Quirk (docs/architecture.md): saved before the return row is added, and kept when that fails.
void RefundOperations::noteOnLine(LineKey line, const Refund &refund)
{
    ado::Recordset &details = flow::opened(session_.rsCustSaleDetails);
    if (!details.moveToKey(line.bookmark()))
        ado::raiseConflict();
    const QString field = QStringLiteral("OrdD_RfndMemo");
    const QVariant earlier = details[field];
    const QString note = noteOf(refund);
    try {
        details.setValue(field, runtime::isNull(earlier) ? note : runtime::text(earlier) + QLatin1Char('\n') + note);
        details.Update();
    } catch (const runtime::RuntimeError &) {
        runtime::Attempt undo;
        undo([&] { details.CancelUpdate(); });
        throw;
    }
}

/// The date alone chooses the order: of several on one date the first that the server gives, even if the sold line is
/// on another.
Outcome RefundOperations::addRow(const SoldLine &sold, const Refund &refund)
{
    const QString remark = remarkOf(sold, refund);
    if (refund.date != sold.date) {
        const qint16 ordersOfDate = orders_.countTodayOrders(sold.customer, refund.date);
        if (ordersOfDate < 0)
            return Outcome::Failed;
        if (ordersOfDate == 0)
            return orders_.addToNewRefundOrder(refund.date, sold.product, refund.unitPrice, refund.count, remark);
    }
    const OrderKey order = orders_.findOrderByDate(sold.customer, refund.date);
    if (!order)
        return Outcome::Failed;
    return orders_.addRefundOrderDetail(order, sold.product, refund.unitPrice, refund.count, remark);
}
