#include "sales/RefundFlow.h"

#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Modal.h"
#include "sales/DetailPane.h"
#include "sales/frmRefund.h"

#include <QPointer>

RefundFlow::RefundFlow(SaleSession &session, DetailPane &detailPane, QWidget *owner)
    : QObject(owner)
    , session_(session)
    , detailPane_(detailPane)
    , operations_(session)
    , owner_(owner)
{
    controls::onEvent(&detailPane, &DetailPane::refundAsked, this, [this] { takeBack(); });
}

void RefundFlow::takeBack()
{
    SoldLine sold;
    session_.readAnewOnConflict([&] { sold = operations_.currentLine(); });
    Refund refund;
    const QPointer<RefundFlow> alive(this);
    {
        const controls::Modal<frmRefund> dialog(owner_);
        if (dialog->ShowRefundForm(sold.name, sold.unitPrice, sold.unitDiscount, sold.count, sold.date,
                                   detailPane_.chkCmdRefund(), refund.count, refund.date, refund.memo, refund.unitPrice)
                != 1
            || !alive)
            return;
    }
    const Outcome outcome = operations_.takeBack(sold, refund);
    if (alive && outcome == Outcome::Conflict)
        emit session_.changedElsewhere();
    if (!alive || !hasFailed(outcome))
        return;
    detailPane_.showRefundMemo(); // a note may have been saved before
    controls::MsgBox(QStringLiteral("오류가 있어 반품처리를 완료하지 못했습니다."), controls::InformationIcon,
                     QStringLiteral("반품"), owner_);
}
