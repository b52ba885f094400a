#include "money/LedgerInfoPanel.h"

#include "data/WonText.h"
#include "forms/FormRow.h"
#include "forms/clsMyFunctions.h"
#include "forms/clsNumberRelated.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/DateEdit.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/Named.h"
#include "platform/controls/ShowText.h"
#include "platform/controls/Spoken.h"
#include "platform/controls/Wheel.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>

#include <algorithm>

using controls::named;
using runtime::Currency;

namespace {

// The options stand in another order here than elsewhere.
constexpr std::array optionOrder{ledger::Discount, ledger::Cut, ledger::Payment, ledger::Refund};

} // namespace

LedgerInfoPanel::LedgerInfoPanel(QWidget *parent)
    : QWidget(parent)
{
    makeControls();
    placeControls();
    connectControls();
    reset();
}

void LedgerInfoPanel::makeControls()
{
    dtpTransReceiveDate_ = named(new controls::DateEdit(this), QStringLiteral("dtpTransReceiveDate"));
    auto *choice = new QButtonGroup(this);
    for (std::size_t index = 0; index < optionOrder.size(); ++index) {
        auto *option = new QRadioButton(ledger::operatorText(optionOrder[index]), this);
        choice->addButton(named(option, QStringLiteral("optTransOperator"), int(index)), int(index));
        optTransOperator_[index] = option;
    }
    txtTransMoney_ = named(new MoneyBox(MoneyHabits, this), QStringLiteral("txtTransMoney"));
    cboPayMethod_ = named(controls::withGuardedWheel(new QComboBox(this)), QStringLiteral("cboPayMethod"));
    cboPayMethod_->addItem(QString(), QString()); // none is chosen, which is stored as NULL
    for (const ledger::Method &method : ledger::methods)
        cboPayMethod_->addItem(QString::fromUtf16(method.text), QString(method.stored));
    txtTransMemo_ = named(new MoneyBox({.onFocus = OnFocus::CaretToEnd}, this), QStringLiteral("txtTransMemo"));
    txtTranTotalAmount_ = named(new QLineEdit(this), QStringLiteral("txtTranTotalAmount"));
    txtTranLeftAmount_ = named(new QLineEdit(this), QStringLiteral("txtTranLeftAmount"));
    for (QLineEdit *figure : {txtTranTotalAmount_, txtTranLeftAmount_}) {
        clsMyFunctions::keepReadOnly(figure);
        controls::speakMoney(figure);
        figure->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        controls::setGround(figure, controls::Ground::Locked);
    }
    showLargeMoney(txtTranTotalAmount_);
    txtTransMoney_->setMinimumWidth(boxWidth(txtTransMoney_, longMoney));
    chkTransMisuMoneyRecalculate_ =
        named(new QCheckBox(QStringLiteral("미수금 재계산"), this), QStringLiteral("chkTransMisuMoneyRecalculate"));
    chkTranMisuRecord_ =
        named(new QCheckBox(QStringLiteral("잔액 미수금에 기록"), this), QStringLiteral("chkTranMisuRecord"));
    chkCmdSaveTrans_ = makeSaveButtons(QStringLiteral("chkCmdSaveTrans"), this);
    chkCmdSaveMemo_ = named(new controls::PushCheck(QStringLiteral("저장"), this), QStringLiteral("chkCmdSaveMemo"));
    chkCmdSaveMemo_->setAccessibleName(QStringLiteral("메모 저장"));
}

void LedgerInfoPanel::placeControls()
{
    QGridLayout *grid = makeFormGrid(this);
    grid->setColumnStretch(3, 1);
    addFormRow(grid, 0, 0, QStringLiteral("일자:"), dtpTransReceiveDate_);
    auto *save = new QHBoxLayout;
    save->setSpacing(4);
    save->addStretch(1);
    for (controls::PushCheck *button : chkCmdSaveTrans_)
        save->addWidget(button);
    letShrink({chkCmdSaveTrans_[0], chkCmdSaveTrans_[1], chkCmdSaveMemo_});
    grid->addLayout(save, 0, 2, 1, 2);
    auto *operators = new QHBoxLayout;
    operators->setSpacing(8);
    for (QRadioButton *option : optTransOperator_)
        operators->addWidget(option);
    operators->addStretch(1);
    auto *caption = new QLabel(QStringLiteral("방법:"), this);
    caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(caption, 1, 0);
    grid->addLayout(operators, 1, 1, 1, 3);
    // The sums to be received stand below those of the order.
    addFormRow(grid, 2, 0, QStringLiteral("결재방법:"), cboPayMethod_);
    addFormRow(grid, 2, 2, QStringLiteral("받을 금액:"), txtTranTotalAmount_);
    addFormRow(grid, 3, 0, QStringLiteral("금액:"), txtTransMoney_);
    addFormRow(grid, 3, 2, QStringLiteral("잔액 :"), txtTranLeftAmount_);
    auto *checks = new QHBoxLayout;
    checks->setSpacing(10);
    checks->addWidget(chkTransMisuMoneyRecalculate_);
    checks->addWidget(chkTranMisuRecord_);
    checks->addStretch(1);
    grid->addLayout(checks, 4, 1, 1, 3);
    auto *memo = new QHBoxLayout;
    memo->setSpacing(4);
    memo->addWidget(txtTransMemo_, 1);
    memo->addWidget(chkCmdSaveMemo_);
    auto *memoCaption = new QLabel(QStringLiteral("메모:"), this);
    memoCaption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    memoCaption->setBuddy(txtTransMemo_);
    txtTransMemo_->setAccessibleName(QStringLiteral("수납 메모"));
    grid->addWidget(memoCaption, 5, 0);
    grid->addLayout(memo, 5, 1, 1, 3);
    grid->setRowStretch(6, 1);
}

void LedgerInfoPanel::connectControls()
{
    for (const ledger::Operator code : ledger::operators) {
        controls::onEvent(option(code), &QRadioButton::toggled, this, [this, code](bool on) {
            if (on)
                operatorChosen(code);
        });
    }
    controls::onEvent(txtTransMoney_, &QLineEdit::textChanged, this, [this](const QString &) { moneyTyped(); });
}

QRadioButton *LedgerInfoPanel::option(ledger::Operator code) const
{
    return optTransOperator_[std::size_t(std::ranges::find(optionOrder, code) - optionOrder.begin())];
}

void LedgerInfoPanel::operatorChosen(ledger::Operator code)
{
    if (code != ledger::Refund)
        controls::setInk(txtTranLeftAmount_, controls::Ink::Plain);
    else if (option(ledger::Refund)->isEnabled())
        controls::setInk(txtTranLeftAmount_, controls::Ink::Faint);
    // Payments and refunds change the outstanding money unless the user says otherwise; cuts and discounts don't.
    chkTransMisuMoneyRecalculate_->setChecked(code == ledger::Payment || code == ledger::Refund);
}

void LedgerInfoPanel::moneyTyped()
{
    if (option(ledger::Refund)->isChecked())
        return; // money paid out does not lessen what is left; the figure stands
    const clsNumberRelated numbers;
    const Currency left = runtime::CCur(numbers.GetPureNumber(txtTranTotalAmount_->text()))
                          - runtime::CCur(numbers.GetPureNumber(txtTransMoney_->text()));
    txtTranLeftAmount_->setText(runtime::money(left));
}

void LedgerInfoPanel::reset()
{
    dtpTransReceiveDate_->setDate(QDate::currentDate());
    option(ledger::Payment)->setChecked(true);
    cboPayMethod_->setCurrentIndex(0);
    txtTransMoney_->setText(runtime::money({}));
    txtTranLeftAmount_->setText(runtime::money({}));
    chkTransMisuMoneyRecalculate_->setChecked(false);
    chkTransMisuMoneyRecalculate_->setEnabled(false);
    txtTransMemo_->clear();
}

void LedgerInfoPanel::showRow(const ado::Recordset &ledger, std::optional<Currency> balance)
{
    const QVariant date = ledger[QStringLiteral("tpstrans_Date")];
    dtpTransReceiveDate_->setDate(runtime::isNull(date) ? QDate(1900, 1, 1) : date.toDate());
    showOperator(ledger[QStringLiteral("tpstrans_Operator")]);
    showMethod(ledger[QStringLiteral("tpstrans_Method")]);
    if (balance)
        showBalance(*balance);
    showMemo(ledger[QStringLiteral("tpstrans_Memo")]);
    clearMoney();
}

void LedgerInfoPanel::showWithoutRow(std::optional<Currency> balance)
{
    showBalance(balance.value_or(Currency()));
    if (!balance)
        txtTranLeftAmount_->setText(runtime::money({}));
}

void LedgerInfoPanel::showBalance(Currency balance)
{
    txtTranTotalAmount_->setText(runtime::money(balance));
}

QString LedgerInfoPanel::shownBalance() const
{
    const QString total = txtTranTotalAmount_->text();
    return wonText(total.isEmpty() ? Currency() : runtime::CCur(total));
}

void LedgerInfoPanel::showMemo(const QVariant &memo)
{
    controls::showText(txtTransMemo_, runtime::text(memo));
}

void LedgerInfoPanel::clearMoney()
{
    txtTransMoney_->setText(runtime::money({}));
    showLeftAmount();
}

void LedgerInfoPanel::showLeftAmount()
{
    const QString total = txtTranTotalAmount_->text();
    const Currency balance = total.isEmpty() ? Currency() : runtime::CCur(total);
    txtTranLeftAmount_->setText(runtime::money(balance - runtime::CCur(txtTransMoney_->text())));
}

/// A code that is none leaves the options as they are.
void LedgerInfoPanel::showOperator(const QVariant &stored)
{
    const qint32 number = runtime::isNull(stored) ? ledger::Payment : runtime::CLng(stored);
    for (const ledger::Operator code : ledger::operators) {
        if (code == number)
            option(code)->setChecked(true);
    }
}

/// A method that is not on the list leaves it as it is.
void LedgerInfoPanel::showMethod(const QVariant &stored)
{
    const int index = cboPayMethod_->findData(runtime::text(stored));
    if (index >= 0)
        cboPayMethod_->setCurrentIndex(index);
}

LedgerEntry LedgerInfoPanel::entry() const
{
    LedgerEntry entry;
    entry.date = dtpTransReceiveDate_->date();
    for (const ledger::Operator code : ledger::operators) {
        if (option(code)->isChecked())
            entry.intOperator = code;
    }
    if (cboPayMethod_->currentIndex() > 0)
        entry.method = cboPayMethod_->currentData();
    entry.money = runtime::CCur(txtTransMoney_->text());
    entry.memo = memo();
    entry.recalculates = chkTransMisuMoneyRecalculate_->isChecked();
    return entry;
}

ControlGroup LedgerInfoPanel::colTrans() const
{
    ControlGroup group{dtpTransReceiveDate_};
    group.append(ControlGroup(optTransOperator_.begin(), optTransOperator_.end()));
    group << txtTransMoney_ << cboPayMethod_ << chkTransMisuMoneyRecalculate_;
    group.append(saveButtons());
    return group;
}

QList<QWidget *> LedgerInfoPanel::saveButtons() const
{
    return {chkCmdSaveTrans_[0], chkCmdSaveTrans_[1]};
}

QList<EntryColor> LedgerInfoPanel::entryColors() const
{
    const auto open = controls::Ground::Field;
    const auto face = controls::Ground::Face;
    return {
        {dtpTransReceiveDate_, controls::Ground::Locked},
        {txtTransMoney_, controls::Ground::Locked},
        {cboPayMethod_, controls::Ground::Locked},
        {txtTranTotalAmount_, controls::Ground::Locked},
        {txtTranLeftAmount_, controls::Ground::Locked},
        {txtTransMemo_, open},
        {chkTransMisuMoneyRecalculate_, face},
        {chkTranMisuRecord_, face},
    };
}

QList<EntryColor> LedgerInfoPanel::editColors() const
{
    const auto open = controls::Ground::Field;
    return {
        {txtTransMoney_, controls::Ground::Needed},
        {dtpTransReceiveDate_, open},
        {cboPayMethod_, open},
        {txtTransMemo_, open},
    };
}
