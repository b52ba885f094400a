#include "sales/RefundFlow.h"

#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "sales/DetailPane.h"
#include "sales/frmRefund.h"

#include <QPointer>
#include <QScopeGuard>

RefundFlow::RefundFlow(SaleSession &session, DetailPane &detailPane, QWidget *owner)
    : QObject(owner)
    , detailPane_(detailPane)
    , operations_(session)
    , owner_(owner)
{
    controls::onEvent(&detailPane, &DetailPane::refundAsked, this, [this] { takeBack(); });
}

void RefundFlow::takeBack()
{
    const SoldLine sold = operations_.currentLine();
    Refund refund;
    // The window may go while the dialog stands over it, and takes the dialog along.
    const QPointer<frmRefund> dialog = new frmRefund(owner_);
    const auto release = qScopeGuard([&] { delete dialog.data(); });
    if (dialog->ShowRefundForm(sold.name, sold.unitPrice, sold.unitDiscount, sold.count, sold.date,
                               detailPane_.chkCmdRefund(), refund.count, refund.date, refund.memo, refund.unitPrice)
        != 1)
        return;
    if (operations_.takeBack(sold, refund) == Outcome::Failed) {
        controls::MsgBox(QStringLiteral("오류가 있어 반품처리를 완료하지 못했습니다."), controls::InformationIcon,
                         QStringLiteral("반품"), owner_);
        detailPane_.showRefundMemo(); // the note was saved before
    }
}
