#include "sales/RefundFlow.h"

#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Modal.h"
#include "sales/DetailPane.h"
#include "sales/LineKinds.h"
#include "sales/frmRefund.h"

#include <QPointer>

namespace {

const QString refundTitle = QStringLiteral("반품");

} // namespace

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
    if (isRefused(RefundOperations::refusal(sold)))
        return;
    Refund refund;
    const QPointer<RefundFlow> alive(this);
    {
        const controls::Modal<frmRefund> dialog(owner_);
        if (dialog->ShowRefundForm(sold.name, sold.unitPrice, sold.unitDiscount, sold.count, sold.order.date,
                                   detailPane_.chkCmdRefund(), refund.count, refund.date, refund.memo, refund.unitPrice)
                != 1
            || !alive)
            return;
    }
    if (isRefused(RefundOperations::refusal(refund)))
        return;
    const Outcome outcome = operations_.takeBack(sold, refund);
    if (alive && outcome == Outcome::Done)
        emit session_.done(QStringLiteral("%1 %2개 반품").arg(sold.name).arg(-refund.count));
    if (alive && outcome == Outcome::Conflict)
        emit session_.changedElsewhere();
    if (!alive || !hasFailed(outcome))
        return;
    detailPane_.showRefundMemo(); // a note may have been saved before
    controls::MsgBox(QStringLiteral("오류가 있어 반품처리를 완료하지 못했습니다."), controls::InformationIcon,
                     refundTitle, owner_, outcome == Outcome::ProductGone ? productIsGone : QString());
}

bool RefundFlow::isRefused(const QString &why) const
{
    if (!why.isEmpty())
        controls::MsgBox(why, controls::InformationIcon, refundTitle, owner_);
    return !why.isEmpty();
}
