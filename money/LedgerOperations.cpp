#include "money/LedgerOperations.h"

#include "data/HeldOrder.h"
#include "data/clsSQL.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"

namespace ledger {

void append(ado::Connection &connection, const Row &row)
{
    const QString statement = clsSQL().InsertTransactionSQL(row.lngCustPK, row.date, row.intOperator, row.lngMoney,
                                                            row.lngOrdMPK, row.strMethod, QString());
    onHeldOrder(connection, row.lngOrdMPK, [&] { connection.Execute(statement); });
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
            append(connection, {payment.lngCustPK, payment.lngOrdMPK, payment.date, part.intOperator,
                                runtime::CLng(double(part.money)), part.strMethod});
    }
}

void change(ado::Connection &connection, qint32 lngTpstransPK, const Row &row)
{
    const QString statement = row.intOperator == NoOperator
        ? clsSQL::updateButOperatorSQL(row.lngCustPK, row.date, row.lngMoney, row.lngOrdMPK, lngTpstransPK)
        : clsSQL().UpdateTransactionSQL(row.lngCustPK, row.date, row.intOperator, row.lngMoney, row.lngOrdMPK, lngTpstransPK);
    connection.BeginTrans();
    try {
        connection.Execute(statement);
        connection.CommitTrans();
    } catch (const runtime::RuntimeError &) {
        // At once: nothing may stay locked while the user reads of it.
        connection.RollbackTrans();
        throw;
    }
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

void addOutstanding(ado::Recordset &rsCustSaleMaster, runtime::Currency money)
{
    rsCustSaleMaster.Resync();
    const QVariant stored = rsCustSaleMaster[QStringLiteral("OrdM_Misugum")];
    const runtime::Currency before = runtime::isNull(stored) ? runtime::Currency() : runtime::CCur(stored);
    storeOutstanding(rsCustSaleMaster, before + money);
    rsCustSaleMaster.Resync();
}

} // namespace ledger
