#include "money/LedgerEntry.h"

#include "data/HeldOrder.h"
#include "data/OrderBalance.h"
#include "money/LedgerOperations.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Operation.h"
#include "session/modGlobalVars.h"

#include <functional>

using runtime::Currency;
using runtime::RuntimeError;

namespace ledger {

namespace {

ado::Recordset &openRows(const SaleSession::RecordsetPtr &rows)
{
    if (!rows || !rows->isOpen() || !gcnnMasterDB)
        throw RuntimeError(runtime::ErrorNumber::ObjectClosed, QStringLiteral("목록이 열려 있지 않습니다."));
    return *rows;
}

/// An error rolls back, and what the failed save left in the list goes.
bool savedInTransaction(SaleSession &session, const std::function<void(ado::Recordset &)> &write)
{
    runtime::Attempt save;
    save([&] {
        ado::Recordset &ledger = openRows(session.rsCustTranManage);
        ado::Transaction transaction(*gcnnMasterDB);
        write(ledger);
        transaction.commit();
    });
    if (!save.failed())
        return true;
    runtime::Attempt undo;
    if (session.rsCustTranManage && session.rsCustTranManage->isOpen())
        undo([&] { session.rsCustTranManage->Requery(); });
    return false;
}

void assign(ado::Recordset &ledger, const LedgerEntry &entry)
{
    ledger.setValue(QStringLiteral("tpstrans_Date"), entry.date);
    ledger.setValue(QStringLiteral("tpstrans_Method"), entry.method);
    ledger.setValue(QStringLiteral("tpstrans_Money"), QVariant::fromValue(entry.money));
    ledger.setValue(QStringLiteral("tpstrans_Memo"), entry.memo);
}

void setOutstandingToBalance(SaleSession &session, const ShownOrder &order)
{
    ado::Recordset &orders = openRows(session.rsCustSaleMaster);
    standOnOrder(orders, order);
    storeOutstanding(orders, calcOrderMisugum(&orders, gcnnMasterDB, runtime::CLng(orders[QStringLiteral("Cust_PK")]),
                                              order.number()));
}

} // namespace

bool addFormEntry(SaleSession &session, const ShownOrder &order, const LedgerEntry &entry)
{
    return savedInTransaction(session, [&](ado::Recordset &ledger) {
        holdOrder(*gcnnMasterDB, order);
        ledger.AddNew();
        ledger.setValue(QStringLiteral("tpstrans_Customer_PK"), session.customer.lngCustPK);
        ledger.setValue(QStringLiteral("tpstrans_OrderM_PK"), order.number());
        ledger.setValue(QStringLiteral("tpstrans_Operator"), entry.intOperator);
        assign(ledger, entry);
        ledger.Update();
    });
}

void followAddedFormEntry(SaleSession &session, const ShownOrder &order, const LedgerEntry &entry)
{
    if (!entry.recalculates)
        return;
    if (entry.intOperator == Payment) {
        setOutstandingToBalance(session, order);
    } else if (entry.intOperator == Refund) {
        ado::Recordset &orders = openRows(session.rsCustSaleMaster);
        standOnOrder(orders, order);
        const QVariant stored = orders[QStringLiteral("OrdM_Misugum")];
        // Quirk (docs/architecture.md): the first refund of an order without outstanding money only makes it 0.
        storeOutstanding(orders, runtime::isNull(stored) ? Currency() : runtime::CCur(stored) + entry.money);
    }
}

bool changeFormEntry(SaleSession &session, const ShownOrder &order, LedgerKey row, const LedgerEntry &entry)
{
    const runtime::Operation operation("change ledger row", {{"order", order.number()}, {"row", row.number()}});
    return savedInTransaction(session, [&](ado::Recordset &ledger) {
        holdOrder(*gcnnMasterDB, order);
        holdLedgerRow(*gcnnMasterDB, row, order);
        if (!ledger.moveToKey(row.bookmark()))
            raiseGone(QStringLiteral("다른 데스크에서 먼저 삭제한 수납 내역입니다."));
        assign(ledger, entry); // quirk (docs/architecture.md): the operator stays, whichever is chosen
        ledger.Update();
        if (entry.recalculates)
            setOutstandingToBalance(session, order);
    });
}

} // namespace ledger
