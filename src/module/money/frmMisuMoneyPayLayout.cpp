// The form of a payment against outstanding money: which controls it has and where they stand.
#include "money/frmMisuMoneyPay.h"

#include "data/Codes.h"
#include "forms/FormRow.h"
#include "forms/SpokenNames.h"
#include "money/DialogKeys.h"
#include "platform/controls/Named.h"
#include "platform/controls/Wheel.h"

#include <QLabel>
#include <QVBoxLayout>

using controls::named;
using dialogForm::amountBox;
using dialogForm::Holds;
using dialogForm::readOnlyBox;

namespace {

struct SummaryFigure
{
    ledger::Operator code;
    const char16_t *name; ///< behind "txtGeneral" and "txtBonin"
};

constexpr SummaryFigure summaryFigures[] = {
    {ledger::Discount, u"Discount"},
    {ledger::Cut, u"Cut"},
    {ledger::Payment, u"Pay"},
    {ledger::Refund, u"Refund"},
};

} // namespace

void frmMisuMoneyPay::createControls()
{
    setObjectName(QStringLiteral("frmMisuMoneyPay"));
    setWindowTitle(QStringLiteral("미수금 수납"));
    auto *form = new QVBoxLayout(this);
    form->setSizeConstraint(QLayout::SetFixedSize);
    form->setSpacing(8);
    form->addLayout(dialogForm::layOutHead(head_, QStringLiteral("txtReceipt"), QStringLiteral("TxDate"), this));
    form->addWidget(makeSummary());
    form->addWidget(makeEntry());
    form->addLayout(dialogForm::layOutSaveAndCancel(cmdConfirm_, cmdCancel_, this));
    setTabChain({head_.dtpTodat, txtGeneralSunap_, cboGeneralPayMethod_, cmdConfirm_, cmdCancel_});
    giveSpokenNames(this);
}

QGroupBox *frmMisuMoneyPay::makeSummary()
{
    auto *frame = new QGroupBox(QStringLiteral("기존 수납내역 요약"), this);
    auto *grid = new QGridLayout(frame);
    grid->setHorizontalSpacing(8);
    grid->addWidget(new QLabel(QStringLiteral("일반")), 1, 0, Qt::AlignRight);
    grid->addWidget(new QLabel(QStringLiteral("본인")), 2, 0, Qt::AlignRight);
    int column = 0;
    for (const SummaryFigure &figure : summaryFigures) {
        const QString caption = ledger::operatorText(figure.code);
        const QString name = QString::fromUtf16(figure.name);
        QLineEdit *general = readOnlyBox(QStringLiteral("txtGeneral") + name, Holds::Money, frame);
        QLineEdit *bonin = readOnlyBox(QStringLiteral("txtBonin") + name, Holds::Money, frame);
        general->setAccessibleName(caption);
        bonin->setAccessibleName(QStringLiteral("본인 ") + caption);
        general->setMinimumWidth(dialogForm::amountWidth(*general));
        auto *head = new QLabel(caption);
        head->setBuddy(general);
        txtGeneral_[std::size_t(column)] = general;
        txtBonin_[std::size_t(column)] = bonin;
        ++column;
        grid->addWidget(head, 0, column, Qt::AlignRight);
        grid->addWidget(general, 1, column);
        grid->addWidget(bonin, 2, column);
    }
    return frame;
}

QGroupBox *frmMisuMoneyPay::makeEntry()
{
    auto *frame = named(new QGroupBox(QStringLiteral("미수 수납 내역"), this), QStringLiteral("fraOldSunap"));
    txtGeneralSunap_ = amountBox(QStringLiteral("txtGeneralSunap"), frame);
    mudMisuSunap_ = new MoneyUpDown(QStringLiteral("mudMisuSunap"), frame);
    cboGeneralPayMethod_ =
        named(controls::withGuardedWheel(new QComboBox(frame)), QStringLiteral("cboGeneralPayMethod"));
    for (std::size_t index = ledger::firstOwedMethod; index < ledger::methods.size(); ++index)
        dialogForm::addMethod(cboGeneralPayMethod_, ledger::methods[index]);

    auto *grid = new QGridLayout(frame);
    grid->setHorizontalSpacing(8);
    grid->setColumnStretch(1, 1);
    addFormRow(grid, 0, 0, QStringLiteral("금액"), txtGeneralSunap_);
    grid->addWidget(mudMisuSunap_, 0, 2, 2, 1);
    addFormRow(grid, 1, 0, QStringLiteral("결재방법"), cboGeneralPayMethod_);
    return frame;
}

void frmMisuMoneyPay::setKeys()
{
    auto *keys = new DialogKeys(this, cmdConfirm_, cmdCancel_);
    keys->setHabits(txtGeneralSunap_, DialogKeys::MovesByArrows | DialogKeys::SelectsOnFocus);
    mudMisuSunap_->serve(txtGeneralSunap_, MoneyUpDown::OnKey::Keep);
}
