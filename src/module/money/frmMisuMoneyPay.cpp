#include "money/frmMisuMoneyPay.h"

#include "money/clsOperationMoney.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/Modal.h"
#include "platform/controls/ShowText.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "settings/clsFormPosition.h"
#include "settings/modFormLocate.h"

using dialogForm::groupedWon;

frmMisuMoneyPay::frmMisuMoneyPay(QWidget *owner)
    : QDialog(owner)
{
    createControls();
    controls::onEvent(cmdConfirm_, &QPushButton::clicked, this, [this](bool) { confirm(); });
    connect(cmdCancel_, &QPushButton::clicked, this, &QDialog::reject);
    setKeys();
}

qint32 frmMisuMoneyPay::showSummary(const ado::ConnectionPtr &cnCon, const QDate &dtOrder, qint32 lngOrdMPK,
                                    qint32 lngTotal)
{
    clsOperationMoney operations;
    qint32 lngCut = 0, lngDiscount = 0, lngPaid = 0, lngRefund = 0;
    operations.OPM_GetCutByReceiptBoninGeneral(cnCon, lngOrdMPK, lngCut, dtOrder);
    operations.OPM_GetDiscountByReceiptBoninGeneral(cnCon, lngOrdMPK, lngDiscount, dtOrder);
    operations.OPM_GetPayByReceiptBoninGeneral(cnCon, lngOrdMPK, lngPaid, dtOrder);
    operations.OPM_GetRefundByReceiptBoninGeneral(cnCon, lngOrdMPK, lngRefund, dtOrder);
    const qint32 shown[] = {lngDiscount, lngCut, lngPaid, lngRefund};
    for (std::size_t figure = 0; figure < txtGeneral_.size(); ++figure)
        txtGeneral_[figure]->setText(groupedWon(shown[figure]));

    qint32 rest = lngTotal;
    for (const qint64 change : {-qint64(lngCut), -qint64(lngDiscount), -qint64(lngPaid), qint64(lngRefund)})
        rest = runtime::toLong(rest + change);
    return rest;
}

bool frmMisuMoneyPay::MisuMoneyPayBoninGeneral(const ado::ConnectionPtr &cnCon, const QString &strChartNum,
                                               const QString &strName, const QDate &dtOrder, qint32 lngOrdMPK,
                                               qint32 lngMisu, qint32 lngTotal, QDate &dtPay, qint32 &lngPay,
                                               QString &strMethod)
{
    bConfirmed_ = false;
    head_.txtDate->setText(runtime::dateText(dtOrder));
    head_.txtGeneral->setText(groupedWon(lngTotal));
    head_.dtpTodat->setDate(QDate::currentDate());
    head_.txtChartnum->setText(strChartNum);
    controls::showText(head_.txtName, strName);
    lngPay = showSummary(cnCon, dtOrder, lngOrdMPK, lngTotal);
    txtGeneralSunap_->setText(QString::number(lngMisu));
    cboGeneralPayMethod_->setCurrentIndex(0);

    adjustSize();
    if (parentWidget())
        clsFormPosition().CenterMain(*parentWidget()->window(), *this);
    else
        clsFormPosition().CenterScreen(*this);
    keepOnScreen(*this);
    mudMisuSunap_->setEnabled(false);
    setWindowModality(Qt::ApplicationModal);
    txtGeneralSunap_->setFocus(Qt::OtherFocusReason);
    if (!controls::runModal(this) || !bConfirmed_)
        return false;

    dtPay = head_.dtpTodat->date();
    lngPay = wholeMoney(txtGeneralSunap_->text());
    strMethod = cboGeneralPayMethod_->currentData().toString();
    return true;
}

void frmMisuMoneyPay::confirm()
{
    if (!dialogForm::isAmount(txtGeneralSunap_, QStringLiteral("미수금 수납"), this))
        return;
    bConfirmed_ = true;
    accept();
}
