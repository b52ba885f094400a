#include "money/OutstandingFlow.h"

#include "data/ShownReadings.h"
#include "data/WonText.h"
#include "money/LedgerPane.h"
#include "money/OutstandingMoney.h"
#include "money/frmMisuMoneyManager.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/Modal.h"
#include "platform/runtime/Attempt.h"
#include "session/modGlobalVars.h"

#include <QPointer>

OutstandingFlow::OutstandingFlow(SaleSession &session, LedgerPane &ledgerPane, QWidget *owner)
    : QObject(owner)
    , session_(session)
    , owner_(owner)
{
    controls::onEvent(&ledgerPane, &LedgerPane::outstandingMoneyAsked, this, [this] { showOutstandingMoney(); });
}

void OutstandingFlow::showOutstandingMoney()
{
    const QPointer<OutstandingFlow> self(this);
    {
        const controls::Modal<frmMisuMoneyManager> dialog(owner_);
        dialog->MisuMoneyManager(gcnnMasterDB, owner_, outstanding::OneCustomer, session_.customer.lngCustPK, 0);
        if (self && dialog && !dialog->paid().isZero())
            emit session_.done(QStringLiteral("미수금 수납 ") + wonText(dialog->paid()));
    }
    if (!self || !session_.rsCustSaleMaster)
        return;
    ado::Recordset &orders = *session_.rsCustSaleMaster;
    ado::Foresight next(gcnnMasterDB);
    shownReadings::tellOrders(next, orders, session_.customer.lngCustPK);
    runtime::Attempt attempt; // a list that cannot be read again stays as it is
    ado::Bookmark current;
    attempt([&] { current = orders.bookmark(); });
    attempt([&] { orders.Requery(); });
    attempt([&] {
        if (self && !orders.moveToKey(current)) // deleted by another desk: no row, rather than a neighbour nobody chose
            orders.moveTo(orders.rowCount());
    });
}
