#include "money/LedgerEntry.h"

#include "data/HeldOrder.h"
#include "data/OrderBalance.h"
#include "money/LedgerOperations.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "session/modGlobalVars.h"

#include <functional>

using runtime::Currency;
using runtime::RuntimeError;

namespace ledger {

namespace {

ado::Recordset &openRows(const SaleSession::RecordsetPtr &rows)
{
    if (!rows || !rows->isOpen() || !gcnnMasterDB)
        throw RuntimeError(runtime::ErrorNumber::ObjectClosed, QStringLiteral("자료가 열려 있지 않습니다."));
    return *rows;
}

/// An error rolls back, and what the failed save left in the list goes.
bool savedInTransaction(SaleSession &session, const std::function<void(ado::Recordset &)> &write)
{
    try {
        ado::Recordset &ledger = openRows(session.rsCustTranManage);
        gcnnMasterDB->BeginTrans();
        write(ledger);
        gcnnMasterDB->CommitTrans();
        return true;
    } catch (const RuntimeError &) {
        runtime::Attempt undo;
        undo([&] { gcnnMasterDB->RollbackTrans(); });
        undo([&] { session.rsCustTranManage->Requery(); });
        return false;
    }
}

void assign(ado::Recordset &ledger, const LedgerEntry &entry)
{
    ledger.setValue(QStringLiteral("tpstrans_Date"), entry.date);
    ledger.setValue(QStringLiteral("tpstrans_Method"), entry.method);
    ledger.setValue(QStringLiteral("tpstrans_Money"), QVariant::fromValue(entry.money));
    ledger.setValue(QStringLiteral("tpstrans_Memo"), entry.memo);
}

void setOutstandingToBalance(SaleSession &session)
{
    ado::Recordset &orders = openRows(session.rsCustSaleMaster);
    orders.Resync();
    storeOutstanding(orders, calcOrderMisugum(&orders, gcnnMasterDB, runtime::CLng(orders[QStringLiteral("Cust_PK")]),
                                              runtime::CLng(orders[QStringLiteral("OrdM_PK")])));
}

} // namespace

bool addEntry(SaleSession &session, const LedgerEntry &entry)
{
    return savedInTransaction(session, [&](ado::Recordset &ledger) {
        const QVariant lngOrdMPK = openRows(session.rsCustSaleMaster)[QStringLiteral("OrdM_PK")];
        holdOrder(*gcnnMasterDB, runtime::CLng(lngOrdMPK));
        ledger.AddNew();
        ledger.setValue(QStringLiteral("tpstrans_Customer_PK"), session.customer.lngCustPK);
        ledger.setValue(QStringLiteral("tpstrans_OrderM_PK"), lngOrdMPK);
        ledger.setValue(QStringLiteral("tpstrans_Operator"), entry.intOperator);
        assign(ledger, entry);
        ledger.Update();
    });
}

void followAddedEntry(SaleSession &session, const LedgerEntry &entry)
{
    if (!entry.recalculates)
        return;
    if (entry.intOperator == Payment) {
        setOutstandingToBalance(session);
    } else if (entry.intOperator == Refund) {
        ado::Recordset &orders = openRows(session.rsCustSaleMaster);
        orders.Resync();
        const QVariant stored = orders[QStringLiteral("OrdM_Misugum")];
        // Meant as it stands: the first refund of an order without outstanding money only makes it 0.
        storeOutstanding(orders, runtime::isNull(stored) ? Currency() : runtime::CCur(stored) + entry.money);
    }
}

bool changeEntry(SaleSession &session, const LedgerEntry &entry)
{
    return savedInTransaction(session, [&](ado::Recordset &ledger) {
        assign(ledger, entry); // the operator stays as it was stored, whichever is chosen; it is meant so
        ledger.Update();
        if (entry.recalculates)
            setOutstandingToBalance(session);
    });
}

} // namespace ledger
