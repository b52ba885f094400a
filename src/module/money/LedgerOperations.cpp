#include "money/LedgerOperations.h"

#include "data/HeldOrder.h"
#include "data/clsSQL.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Operation.h"

namespace ledger {

void raiseGone(const QString &told)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::Conflict, told);
}

void insertRow(ado::Connection &connection, const Row &row)
{
    const runtime::Operation operation("add ledger row",
                                       {{"order", row.order.number()}, {"customer", row.customer.number()}});
    const QString statement = clsSQL().InsertTransactionSQL(row.customer.number(), row.date, row.intOperator,
                                                            row.lngMoney, row.order.number(), row.strMethod, QString());
    onHeldOrder(connection, row.order.number(), [&] { connection.Execute(statement); });
}

void appendFirstPayment(ado::Connection &connection, const FirstPayment &payment)
{
    const struct
    {
        float money;
        Operator intOperator;
        QString strMethod;
    } parts[] = {
        {payment.discount, Discount, QString()},
        {payment.cut, Cut, QString()},
        {payment.cash, Payment, CashMethod},
        {payment.card, Payment, CardMethod},
    };
    for (const auto &part : parts) {
        if (part.money != 0)
            insertRow(connection, {payment.customer, payment.order, payment.date, part.intOperator,
                                   runtime::CLng(double(part.money)), part.strMethod});
    }
}

void updateRow(ado::Connection &connection, LedgerKey key, const Row &row)
{
    const runtime::Operation operation("change ledger row", {{"order", row.order.number()}, {"row", key.number()}});
    const qint32 customer = row.customer.number();
    const qint32 order = row.order.number();
    const QString statement =
        row.intOperator == NoOperator
            ? clsSQL::updateButOperatorSQL(customer, row.date, row.lngMoney, order, key.number())
            : clsSQL().UpdateTransactionSQL(customer, row.date, row.intOperator, row.lngMoney, order, key.number());
    ado::Transaction transaction(connection); // ends at once: nothing may stay locked while the user reads of an error
    if (connection.Execute(statement) == 0)
        raiseGone(QStringLiteral("다른 데스크에서 먼저 삭제했습니다. 아무것도 저장하지 않았습니다."));
    transaction.commit();
}

void standOnOrder(ado::Recordset &rsCustSaleMaster, OrderKey order)
{
    if (!rsCustSaleMaster.moveToKey(order.bookmark()))
        raiseGone(QStringLiteral("다른 데스크에서 먼저 삭제한 거래입니다."));
    rsCustSaleMaster.Resync();
}

void storeOutstanding(ado::Recordset &rsCustSaleMaster, runtime::Currency money)
{
    try {
        rsCustSaleMaster.setValue(QStringLiteral("OrdM_Misugum"), QVariant::fromValue(money));
        rsCustSaleMaster.Update();
    } catch (const runtime::RuntimeError &) {
        // What was not saved must not ride along with a later save of the row.
        runtime::Attempt undo;
        undo([&] { rsCustSaleMaster.CancelUpdate(); });
        undo([&] { rsCustSaleMaster.Resync(); }); // a server that is lost may have saved before it went
        throw;
    }
}

void addOutstanding(ado::Recordset &rsCustSaleMaster, OrderKey order, runtime::Currency money)
{
    const runtime::Operation operation("change outstanding money", {{"order", order.number()}});
    standOnOrder(rsCustSaleMaster, order);
    const QVariant stored = rsCustSaleMaster[QStringLiteral("OrdM_Misugum")];
    const runtime::Currency before = runtime::isNull(stored) ? runtime::Currency() : runtime::CCur(stored);
    storeOutstanding(rsCustSaleMaster, before + money);
    rsCustSaleMaster.Resync();
}

} // namespace ledger
