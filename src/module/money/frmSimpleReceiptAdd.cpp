#include "money/frmSimpleReceiptAdd.h"

#include "forms/FormRow.h"
#include "forms/SpokenNames.h"
#include "money/DialogKeys.h"
#include "money/LedgerOperations.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Modal.h"
#include "platform/controls/Named.h"
#include "platform/controls/ShowText.h"
#include "platform/controls/Wheel.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "settings/clsFormPosition.h"
#include "settings/modFormLocate.h"

#include <QVBoxLayout>

using controls::named;
using dialogForm::amountBox;
using dialogForm::groupedWon;
using dialogForm::Holds;
using dialogForm::optionOf;
using dialogForm::readOnlyBox;

frmSimpleReceiptAdd::frmSimpleReceiptAdd(QWidget *owner)
    : QDialog(owner)
{
    createControls();
    for (const ledger::Operator code : ledger::operators) {
        controls::onEvent(optionOf(optOperator_, code), &QRadioButton::toggled, this, [this, code](bool on) {
            if (on)
                operatorChosen(code);
        });
    }
    controls::onEvent(cmdConfirm_, &QPushButton::clicked, this, [this](bool) { confirm(); });
    connect(cmdCancel_, &QPushButton::clicked, this, &QDialog::reject);
    dialogForm::applyDiscountSwitch(optOperator_);
    setKeys();
}

void frmSimpleReceiptAdd::createControls()
{
    setObjectName(QStringLiteral("frmSimpleReceiptAdd"));
    setWindowTitle(QStringLiteral("수납"));
    auto *form = new QVBoxLayout(this);
    form->setSizeConstraint(QLayout::SetFixedSize);
    form->setSpacing(8);
    QGridLayout *head = dialogForm::layOutHead(head_, QStringLiteral("txt"), QStringLiteral("Date"), this);
    txtReceipt_PK_ = readOnlyBox(QStringLiteral("txtReceipt_PK"), Holds::Text, this);
    addFormRow(head, 3, 2, QStringLiteral("거래번호"), txtReceipt_PK_);
    form->addLayout(head);
    form->addWidget(makeSummary());
    form->addWidget(makeEntry());
    form->addLayout(dialogForm::layOutSaveAndCancel(cmdConfirm_, cmdCancel_, this));
    setTabOrderOfWork();
}

QGroupBox *frmSimpleReceiptAdd::makeSummary()
{
    auto *frame = new QGroupBox(QStringLiteral("기존 수납내역 요약"), this);
    const struct
    {
        QLineEdit **box;
        ledger::Operator code;
        const char16_t *name;
    } figures[] = {
        {&txtDiscount_, ledger::Discount, u"txtDiscount"},
        {&txtCut_, ledger::Cut, u"txtCut"},
        {&txtPay_, ledger::Payment, u"txtPay"},
        {&txtRefund_, ledger::Refund, u"txtRefund"},
    };
    auto *grid = new QGridLayout(frame);
    grid->setHorizontalSpacing(8);
    int column = 0;
    for (const auto &figure : figures) {
        auto *box = readOnlyBox(QString::fromUtf16(figure.name), Holds::Money, frame);
        box->setMinimumWidth(dialogForm::amountWidth(*box));
        addFormRow(grid, 0, column, ledger::operatorText(figure.code), box);
        *figure.box = box;
        column += 2;
    }
    return frame;
}

QGroupBox *frmSimpleReceiptAdd::makeEntry()
{
    auto *frame = named(new QGroupBox(QStringLiteral("수납 내역 추가"), this), QStringLiteral("fraOldSunap"));
    txtMoney_ = amountBox(QStringLiteral("txtMoney"), frame);
    mudOperationAdd_ = new MoneyUpDown(QStringLiteral("mudOperationAdd"), frame);
    mudOperationAdd_->setEnabled(false);
    sspSunapInfo_ = named(new QWidget(frame), QStringLiteral("sspSunapInfo"));
    cboPayMothod_ = named(controls::withGuardedWheel(new QComboBox), QStringLiteral("cboPayMothod"));
    cboPayMothod_->addItem(QString(), QStringLiteral("")); // cash
    for (std::size_t index = 1; index < ledger::methods.size(); ++index)
        dialogForm::addMethod(cboPayMothod_, ledger::methods[index]);
    auto *panel = new QGridLayout(sspSunapInfo_);
    panel->setContentsMargins(0, 0, 0, 0);
    panel->setHorizontalSpacing(8);
    panel->setColumnStretch(1, 1);
    addFormRow(panel, 0, 0, QStringLiteral("결재방법"), cboPayMothod_);
    chkAutoMisuMoney_ =
        named(new QCheckBox(QStringLiteral("미수금 재계산"), frame), QStringLiteral("chkAutoMisuMoney"));

    auto *grid = new QGridLayout(frame);
    grid->setHorizontalSpacing(8);
    grid->setColumnStretch(1, 1);
    grid->addLayout(dialogForm::layOutOperators(optOperator_, frame), 0, 0, 1, 3);
    addFormRow(grid, 1, 0, QStringLiteral("금액"), txtMoney_);
    grid->setColumnMinimumWidth(0, panel->itemAtPosition(0, 0)->sizeHint().width()); // both boxes stand in line
    grid->addWidget(mudOperationAdd_, 1, 2, 2, 1);
    grid->addWidget(sspSunapInfo_, 2, 0, 1, 2);
    grid->addWidget(chkAutoMisuMoney_, 3, 0, 1, 3);
    return frame;
}

void frmSimpleReceiptAdd::setTabOrderOfWork()
{
    QList<QWidget *> order{head_.dtpTodat};
    order.append(QList<QWidget *>(optOperator_.begin(), optOperator_.end()));
    order << txtMoney_ << cboPayMothod_ << chkAutoMisuMoney_ << cmdConfirm_ << cmdCancel_;
    setTabChain(order);
    giveSpokenNames(this);
}

void frmSimpleReceiptAdd::setKeys()
{
    auto *keys = new DialogKeys(this, cmdConfirm_, cmdCancel_);
    keys->setHabits(txtMoney_, DialogKeys::SelectsOnFocus);
    mudOperationAdd_->serve(txtMoney_, MoneyUpDown::OnKey::Keep);
}

void frmSimpleReceiptAdd::operatorChosen(ledger::Operator code)
{
    sspSunapInfo_->setEnabled(code == ledger::Payment || code == ledger::Refund);
    chkAutoMisuMoney_->setEnabled(true);
}

bool frmSimpleReceiptAdd::propose(qint32 rest)
{
    if (rest != 0) {
        optionOf(optOperator_, rest > 0 ? ledger::Payment : ledger::Refund)->setChecked(true);
        txtMoney_->setText(QString::number(qAbs(qint64(rest))));
        return true;
    }
    const QString question = QStringLiteral("물품판매 수납이 완결된 상태입니다.") + QLatin1Char('\r')
                             + QStringLiteral("추가적으로 기록할 수납 등의 내용이 있습니까?");
    constexpr int flags = controls::YesNo | controls::QuestionIcon | controls::SecondButtonDefault;
    const QPointer<frmSimpleReceiptAdd> self(this);
    if (controls::MsgBox(question, flags, QStringLiteral("수납 내역 추가"), parentWidget()) != controls::Answer::Yes
        || !self)
        return false;
    const bool discounts = optionOf(optOperator_, ledger::Discount)->isEnabled();
    optionOf(optOperator_, discounts ? ledger::Discount : ledger::Payment)->setChecked(true);
    txtMoney_->setText(QStringLiteral("0"));
    return true;
}

bool frmSimpleReceiptAdd::OperationAdd(QWidget *frmOwner, const QDate &dtOrder, qint32 lngTotal, qint32 lngDiscount,
                                       qint32 lngCut, qint32 lngPay, qint32 lngRefund, qint32 lngOrdMPK,
                                       const QString &strChartNum, const QString &strName, QDate &dtOper,
                                       qint16 &intOperator, qint32 &lngMoney, QString &strMethod, bool &bRecalc)
{
    bConfirmed_ = false;
    head_.txtDate->setText(runtime::dateText(dtOrder));
    head_.txtBonin->setText(groupedWon(lngTotal));
    txtDiscount_->setText(groupedWon(lngDiscount));
    txtCut_->setText(groupedWon(lngCut));
    txtPay_->setText(groupedWon(lngPay));
    txtRefund_->setText(groupedWon(lngRefund));
    head_.dtpTodat->setDate(dtOrder);
    txtReceipt_PK_->setText(QString::number(lngOrdMPK));
    head_.txtChartnum->setText(strChartNum);
    controls::showText(head_.txtName, strName);
    mudOperationAdd_->setEnabled(false);
    const qint64 taken = qint64(lngDiscount) + lngCut + lngPay - lngRefund;
    if (!propose(runtime::toLong(lngTotal - taken)))
        return false;
    cboPayMothod_->setCurrentIndex(0);
    chkAutoMisuMoney_->setVisible(bRecalc);
    chkAutoMisuMoney_->setChecked(bRecalc);

    adjustSize();
    if (frmOwner) {
        clsFormPosition().CenterMain(*frmOwner, *this);
        keepOnScreen(*this);
    }
    setWindowModality(Qt::ApplicationModal);
    txtMoney_->setFocus(Qt::OtherFocusReason);
    if (!controls::runModal(this) || !bConfirmed_)
        return false;

    dtOper = head_.dtpTodat->date();
    intOperator = dialogForm::chosenOperator(optOperator_);
    const bool moneyMoves = intOperator == ledger::Payment || intOperator == ledger::Refund;
    strMethod = moneyMoves ? cboPayMothod_->currentData().toString() : QString();
    bRecalc = chkAutoMisuMoney_->isChecked();
    lngMoney = wholeMoney(txtMoney_->text());
    return true;
}

void frmSimpleReceiptAdd::confirm()
{
    if (!dialogForm::isAmount(txtMoney_, QStringLiteral("추가 수납"), this))
        return;
    bConfirmed_ = true;
    accept();
}
