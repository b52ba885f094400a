#include "money/frmSimpleReceipt.h"

#include "data/WonText.h"
#include "money/SinglePrecision.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/Modal.h"
#include "platform/controls/ShowText.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "settings/clsFormPosition.h"
#include "settings/modFormLocate.h"

namespace {

using singlePrecision::grouped;
using singlePrecision::read;
using singlePrecision::write;

enum CutEntry { BelowHundred = 2 };

} // namespace

frmSimpleReceipt::frmSimpleReceipt(QWidget *owner)
    : QDialog(owner)
{
    createControls();
    connectControls();
    fillLists();
    readDiscountSwitch();
    setKeys();
}

void frmSimpleReceipt::fillLists()
{
    cboGeneralPercent_->addItems(
        {QStringLiteral("0"), QStringLiteral("10"), QStringLiteral("20"), QStringLiteral("30")});
    cboGeneralPercent_->setCurrentIndex(0);
    txtGeneralHalInMoney_->setText(QStringLiteral("0"));
    cboGeneralJeolsaGubun_->addItems(
        {QStringLiteral("없음"), QStringLiteral("십원미만"), QStringLiteral("백원미만"), QStringLiteral("천원미만")});
    cboGeneralJeolsaGubun_->setCurrentIndex(BelowHundred);
}

void frmSimpleReceipt::readDiscountSwitch()
{
    txtGeneralHalInMoney_->setEnabled(dialogForm::applyDiscountSwitch(optOperator_));
}

void frmSimpleReceipt::connectControls()
{
    using controls::onEvent;
    onEvent(chkBonin100_, &QCheckBox::toggled, this, [this](bool) { showShareTaken(); });
    onEvent(cboGeneralJeolsaGubun_, &QComboBox::currentIndexChanged, this, [this](int) { applyCut(); });
    // Choosing the entry that stands already cuts anew as well.
    onEvent(cboGeneralJeolsaGubun_, &QComboBox::activated, this, [this](int) { applyCut(); });
    onEvent(txtGeneralHalInMoney_, &QLineEdit::textChanged, this, [this](const QString &) { applyCut(); });
    onEvent(txtGeneralJeolSaMoney_, &QLineEdit::textEdited, this, [this](const QString &) {
        showMustReceipt();
        showRemain();
    });
    for (QLineEdit *box : txtGeneralSuNapMoney_)
        onEvent(box, &QLineEdit::textChanged, this, [this](const QString &) { showRemain(); });
    chkGeneralHalinConfirm_->onPush(this, [this] { applyPercent(); });
    for (int index = 0; index < chkGeneralRemain2Money_.size(); ++index)
        chkGeneralRemain2Money_[index]->onPush(this, [this, index] { moveRemain(index); });
    for (int index = 0; index < chkAllSetting_.size(); ++index)
        chkAllSetting_[index]->onPush(this, [this, index] { setAll(index); });
    for (QCheckBox *box : {chkGeneralRemainToHalin_, chkGeneralRemainToMisuMoney_})
        connect(box, &QCheckBox::toggled, this, &frmSimpleReceipt::noteRemain);
    connect(txtMoney_, &QLineEdit::textChanged, this, &frmSimpleReceipt::warnOfZero);
    // A remainder goes to one place only.
    connect(chkGeneralRemainToHalin_, &QCheckBox::toggled, chkGeneralRemainToMisuMoney_, [this](bool on) {
        if (on)
            chkGeneralRemainToMisuMoney_->setChecked(false);
    });
    connect(chkGeneralRemainToMisuMoney_, &QCheckBox::toggled, chkGeneralRemainToHalin_, [this](bool on) {
        if (on)
            chkGeneralRemainToHalin_->setChecked(false);
    });
    onEvent(cmdConfirm_, &QPushButton::clicked, this, [this](bool) { save(); });
    connect(cmdCancel_, &QPushButton::clicked, this, &QDialog::reject);
}

void frmSimpleReceipt::tellOutstanding(runtime::Currency money)
{
    lblOutstanding_->setText(QStringLiteral("이미 기록된 미수금 ") + wonText(money));
    lblOutstanding_->setVisible(money > runtime::Currency());
}

void frmSimpleReceipt::tellEditedRow(const EditedRow &row)
{
    QStringList parts{runtime::dateText(row.date), row.kind, wonText(row.money)};
    if (!row.method.isEmpty())
        parts << row.method;
    lblEditedRow_->setText(QStringLiteral("선택한 내역: ") + parts.join(QStringLiteral(" · ")));
    editedMoney_ = row.money;
    warnOfZero();
}

/// The amount that stands there first is 0 whatever the row's was: who saves it without typing loses the row's money.
void frmSimpleReceipt::warnOfZero()
{
    const bool zero = !editedMoney_.isZero() && read(txtMoney_->text()) == 0;
    lblZeroMoney_->setText(zero ? QStringLiteral("금액이 0으로 바뀝니다") : QString());
    for (QLabel *label : {lblEditedRow_, lblZeroMoney_})
        controls::setInk(label, zero ? controls::Ink::Owed : controls::Ink::Plain);
}

void frmSimpleReceipt::Operation(qint16 intModal, qint32 lngCustPK, const QString &strName, const QString &strChartNum,
                                 const QDate &dtOrder, qint32 lngGeneral, qint32 lngOrdMPK, qint16 bEdit,
                                 const QDate &dtOper, qint32 lngMoney, const QString &strOperator, QWidget *frmOwner)
{
    lngCustPK_ = lngCustPK;
    lngOrdMPK_ = lngOrdMPK;
    bEditMode_ = bEdit;
    shownBefore_ = false;
    controls::showText(head_.txtName, strName);
    head_.txtChartnum->setText(strChartNum);
    head_.txtGeneral->setText(QString::number(lngGeneral));
    head_.txtDate->setText(runtime::dateText(dtOrder));
    mudFirstSunap_->setEnabled(false);
    mudEditSunap_->setEnabled(false);
    if (bEditMode_)
        beginEdit(dtOper, lngMoney, strOperator);
    else
        beginNew(dtOrder);

    setWindowModality(intModal ? Qt::ApplicationModal : Qt::NonModal);
    adjustSize();
    if (frmOwner) {
        clsFormPosition().CenterMain(*frmOwner, *this);
        keepOnScreen(*this);
    }
    if (intModal)
        controls::runModal(this);
    else
        show();
}

void frmSimpleReceipt::beginEdit(const QDate &dtOper, qint32 lngMoney, const QString &strOperator)
{
    head_.dtpTodat->setDate(dtOper);
    fraNewSunap_->hide();
    fraOldSunap_->show();
    txtMoney_->setText(QString::number(lngMoney));
    using dialogForm::optionOf;
    for (const ledger::Operator code : ledger::operators) {
        if (ledger::operatorText(code) != strOperator)
            continue;
        // Where discounts are switched off, a discount row comes up as a payment.
        const bool allowed = code != ledger::Discount || optionOf(optOperator_, code)->isEnabled();
        optionOf(optOperator_, allowed ? code : ledger::Payment)->setChecked(true);
    }
}

void frmSimpleReceipt::beginNew(const QDate &dtOrder)
{
    head_.dtpTodat->setDate(dtOrder); // the day of the order, which need not be today
    fraOldSunap_->hide();
    fraNewSunap_->show();
    lblGeneralRemain_->setText(QStringLiteral("0"));
    txtGeneralHalInMoney_->setText(QStringLiteral("0"));
    showShareTaken();
}

void frmSimpleReceipt::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    // Only as it comes up: returning from another window leaves the focus where the user had it.
    if (!shownBefore_)
        (bEditMode_ ? txtMoney_ : txtGeneralSuNapMoney_[Cash])->setFocus(Qt::OtherFocusReason);
    shownBefore_ = true;
}

void frmSimpleReceipt::showShareTaken()
{
    float base = read(head_.txtGeneral->text()) + read(head_.txtBonin->text());
    if (chkBonin100_->isChecked())
        base = read(head_.txtCheonggu->text()) + base;
    lblGeneral_->setText(runtime::Format(head_.txtGeneral->text(), QStringLiteral("##,##0")));
    lblMustReceipt_[0]->setText(grouped(base));
    lblMustReceipt_[2]->setText(grouped(base));
    txtGeneralHalInMoney_->setText(QStringLiteral("0"));
    txtGeneralJeolSaMoney_->setText(QStringLiteral("0"));
    txtGeneralSuNapMoney_[Cash]->setText(lblGeneral_->text().remove(u','));
    txtGeneralSuNapMoney_[Card]->setText(QStringLiteral("0"));
    applyCut();
}

void frmSimpleReceipt::applyCut()
{
    const float general = read(lblGeneral_->text());
    const float halin = read(txtGeneralHalInMoney_->text());
    const float cut = singlePrecision::cutOf(general - halin, cboGeneralJeolsaGubun_->currentIndex());
    const float pay = general - halin - cut;
    txtGeneralJeolSaMoney_->setText(write(cut));
    setPayment(Cash, pay);
    setPayment(Card, 0);
    showMustReceipt();
}

void frmSimpleReceipt::applyPercent()
{
    const qint32 percent = runtime::CLng(runtime::Val(cboGeneralPercent_->currentText()));
    txtGeneralHalInMoney_->setText(write(singlePrecision::percentOf(read(lblGeneral_->text()), percent)));
    applyCut();
}

void frmSimpleReceipt::showMustReceipt()
{
    const float given = read(txtGeneralJeolSaMoney_->text()) + read(txtGeneralHalInMoney_->text());
    lblMustReceipt_[2]->setText(grouped(read(lblMustReceipt_[0]->text()) - given));
}

float frmSimpleReceipt::toBePaid() const
{
    return read(lblGeneral_->text()) - (read(txtGeneralHalInMoney_->text()) + read(txtGeneralJeolSaMoney_->text()));
}

void frmSimpleReceipt::showRemain()
{
    const float taken = read(txtGeneralHalInMoney_->text()) + read(txtGeneralJeolSaMoney_->text())
                        + read(txtGeneralSuNapMoney_[Cash]->text()) + read(txtGeneralSuNapMoney_[Card]->text());
    lblGeneralRemain_->setText(grouped(read(lblGeneral_->text()) - taken));
    noteRemain();
}

void frmSimpleReceipt::noteRemain()
{
    const bool recorded = chkGeneralRemainToHalin_->isChecked() || chkGeneralRemainToMisuMoney_->isChecked();
    const bool lost = read(lblGeneralRemain_->text()) > 0 && !recorded;
    lblRemainNote_->setText(lost ? QStringLiteral("미수금에 기록되지 않습니다") : QString());
}

void frmSimpleReceipt::setPayment(Medium medium, float money)
{
    txtGeneralSuNapMoney_[medium]->setText(write(money));
    // Also where the text stood already: a discount given since then has changed the remainder.
    showRemain();
}

void frmSimpleReceipt::moveRemain(int index)
{
    const float rest = toBePaid();
    switch (index) {
    case 0:
        setPayment(Cash, rest);
        setPayment(Card, 0);
        break;
    case 1:
        setPayment(Cash, rest - read(txtGeneralSuNapMoney_[Card]->text()));
        break;
    case 2:
        setPayment(Cash, 0);
        setPayment(Card, rest);
        break;
    default:
        setPayment(Card, rest - read(txtGeneralSuNapMoney_[Cash]->text()));
        break;
    }
}

void frmSimpleReceipt::setAll(int index)
{
    constexpr int wholeByCash = 0;
    constexpr int wholeByCard = 2;
    switch (index) {
    case 0:
        chkGeneralRemain2Money_[wholeByCard]->setValue(1);
        break;
    case 1:
        chkGeneralRemain2Money_[wholeByCash]->setValue(1);
        break;
    default:
        setPayment(Cash, 0);
        setPayment(Card, 0);
        chkGeneralRemainToMisuMoney_->setChecked(true);
        break;
    }
}

void frmSimpleReceipt::save()
{
    const QPointer<frmSimpleReceipt> self(
        this); // whoever writes the amounts may open a box, under which the window goes
    if (bEditMode_)
        saveEdit();
    else
        saveNew();
    if (self)
        accept();
}

void frmSimpleReceipt::saveEdit()
{
    emit ExecuteDB(lngCustPK_, head_.dtpTodat->date(), dialogForm::chosenOperator(optOperator_),
                   wholeMoney(txtMoney_->text()), lngOrdMPK_, head_.txtChartnum->text());
}

void frmSimpleReceipt::saveNew()
{
    float halin = read(txtGeneralHalInMoney_->text());
    const float remain = read(lblGeneralRemain_->text());
    float outstanding = 0;
    if (chkGeneralRemainToHalin_->isChecked())
        halin += remain;
    else if (chkGeneralRemainToMisuMoney_->isChecked())
        outstanding = remain;
    emit AppendDBGeneral(lngCustPK_, head_.dtpTodat->date(), halin, read(txtGeneralJeolSaMoney_->text()),
                         read(txtGeneralSuNapMoney_[Cash]->text()), read(txtGeneralSuNapMoney_[Card]->text()),
                         outstanding, lngOrdMPK_, head_.txtChartnum->text());
}
