#include "sales/RefundOperations.h"

#include "data/HeldOrder.h"
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
                           {{u"[SALEDATE]", runtime::text(sold.order.date)},
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
    line.order = shownOrder(*session_.rsCustSaleMaster);
    line.line = LineKey(details[QStringLiteral("OrdD_PK")]);
    line.product = ProductKey(details[QStringLiteral("PM_PK")]);
    line.name = ProductNames().name(line.product.number());
    line.unitPrice = moneyOf(details[QStringLiteral("OrdD_UnitPrice")]);
    line.unitDiscount = moneyOf(details[QStringLiteral("OrdD_HalinUnit")]);
    line.count = runtime::CInt(details[QStringLiteral("OrdD_Count")]);
    return line;
}

QString RefundOperations::refusal(const SoldLine &sold)
{
    // The name stands bare in the row's statement and would break it, after the note was saved.
    if (!sold.name.contains(u'\''))
        return {};
    return QStringLiteral("물품명에 작은따옴표(')가 있어 반품할 수 없습니다. 아무것도 저장하지 않았습니다.\n"
                          "판매물품관리에서 물품명을 수정한 뒤 다시 시도하십시오.");
}

QString RefundOperations::refusal(const Refund &refund)
{
    if (!refund.memo.contains(QChar(u'\0')))
        return {};
    return QStringLiteral("메모에 저장할 수 없는 문자가 있습니다. 아무것도 저장하지 않았습니다.\n"
                          "메모를 지우고 다시 입력하십시오.");
}

Outcome RefundOperations::takeBack(const SoldLine &sold, const Refund &refund)
{
    const runtime::Operation operation("take back", {{"line", sold.line.number()}, {"product", sold.product.number()}});
    return flow::trapped([&] {
        if (!refusal(sold).isEmpty() || !refusal(refund).isEmpty())
            return Outcome::Failed;
        std::optional<ado::Foresight> found(std::in_place, flow::masterDB(), ado::Foresight::Behind::Commit);
        if (refund.date == sold.order.date)
            orders_.tellOrderByDate(*found, sold.order.customer, refund.date);
        return noteOnLine(sold, refund) ? addRow(sold, refund, std::move(found)) : Outcome::ProductGone;
    });
}

/// Quirk (docs/architecture.md): saved before the return row is added, and kept when that fails. False, and no note, when
/// the product is gone: its row could not be added.
bool RefundOperations::noteOnLine(const SoldLine &sold, const Refund &refund)
{
    const ado::ConnectionPtr connection = flow::masterDB();
    ado::Foresight held(connection);
    tellLineHeld(held, sold.line, sold.order.key);
    tellProductHeld(held, sold.product);
    OneStep step(*connection);
    holdOrder(*connection, sold.order);
    holdLine(*connection, sold.line, sold.order.key);
    const bool there = productIsHeld(*connection, sold.product);
    if (there)
        writeNote(step, sold.line, refund);
    else
        step.end();
    return there;
}

void RefundOperations::writeNote(OneStep &step, LineKey line, const Refund &refund)
{
    ado::Recordset &details = flow::opened(session_.rsCustSaleDetails);
    if (!details.moveToKey(line.bookmark()))
        ado::raiseConflict();
    const QString field = QStringLiteral("OrdD_RfndMemo");
    const QVariant earlier = details[field];
    const QString note = noteOf(refund);
    try {
        details.setValue(field, runtime::isNull(earlier) ? note : runtime::text(earlier) + QLatin1Char('\n') + note);
        step.endWith(details);
    } catch (const runtime::RuntimeError &) {
        runtime::Attempt undo;
        undo([&] { details.CancelUpdate(); });
        throw;
    }
}

/// The date alone chooses the order: of several on one date the first that the server gives, even if the sold line is
/// on another.
Outcome RefundOperations::addRow(const SoldLine &sold, const Refund &refund, std::optional<ado::Foresight> found)
{
    const QString remark = remarkOf(sold, refund);
    const CustomerKey customer = sold.order.customer;
    if (refund.date != sold.order.date) {
        const qint16 ordersOfDate = orders_.countTodayOrders(customer, refund.date);
        if (ordersOfDate < 0)
            return Outcome::Failed;
        if (ordersOfDate == 0)
            return orders_.addToNewRefundOrder(refund.date, sold.product, refund.unitPrice, refund.count, remark);
    }
    const OrderKey order = orders_.findOrderByDate(customer, refund.date);
    if (!order)
        return Outcome::Failed;
    found.reset();
    return orders_.addRefundOrderDetail({order, customer, refund.date}, sold.product, refund.unitPrice, refund.count,
                                        remark);
}
