// The form of the simple receipt: which controls it has and where they stand.
#include "money/frmSimpleReceipt.h"

#include "forms/FormRow.h"
#include "forms/SpokenNames.h"
#include "money/DialogKeys.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/LargeFigure.h"
#include "platform/controls/Named.h"
#include "platform/controls/Spoken.h"
#include "platform/controls/Wheel.h"

#include <QVBoxLayout>

using controls::named;
using dialogForm::amountBox;

namespace {

/// Of what is to be paid after discount and cut, and of what is left then.
constexpr double largest = 1.8;

/// A figure that the user does not type; `factor` times as large as the desk's font.
QLabel *figureLabel(const QString &name, int index, double factor)
{
    auto *label = named(new QLabel, name, index);
    label->setFont(controls::largeFont(label->font(), factor));
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QStringLiteral("-9,999,999,999")));
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    controls::speakMoney(label);
    return label;
}

/// A sentence that comes and goes; the form does not jump when it does.
QLabel *noteLabel(const QString &name)
{
    auto *label = named(new QLabel, name);
    label->setTextFormat(Qt::PlainText);
    label->setMinimumHeight(label->fontMetrics().height());
    return label;
}

QLineEdit *amountBoxOf(const QString &name, int index)
{
    return named(amountBox(name, nullptr), name, index);
}

} // namespace

void frmSimpleReceipt::createControls()
{
    setObjectName(QStringLiteral("frmSimpleReceipt"));
    setWindowTitle(QStringLiteral("수납"));
    auto *form = new QVBoxLayout(this);
    form->setSizeConstraint(QLayout::SetFixedSize);
    form->setSpacing(6);
    form->addLayout(dialogForm::layOutHead(head_, QStringLiteral("txt"), QStringLiteral("Date"), this));
    txtReceipt_PK_ = dialogForm::readOnlyBox(QStringLiteral("txtReceipt_PK"), dialogForm::Holds::Text, this);
    txtReceipt_PK_->hide(); // the number of a host's receipt, which a product sale has none of
    // Both frames have the same place; one of them shows.
    layOutNewFrame();
    layOutOldFrame();
    form->addWidget(fraNewSunap_);
    form->addWidget(fraOldSunap_);

    form->addLayout(dialogForm::layOutSaveAndCancel(cmdConfirm_, cmdCancel_, this));
    setTabOrderOfWork();
}

void frmSimpleReceipt::layOutNewFrame()
{
    fraNewSunap_ = named(new QGroupBox(this), QStringLiteral("fraNewSunap"));
    fraNewSunap_->setAccessibleName(QStringLiteral("수납 내역"));
    auto *grid = new QGridLayout(fraNewSunap_);
    grid->setHorizontalSpacing(8);
    grid->setColumnMinimumWidth(1, 130);

    const QString mustReceipt = QStringLiteral("lblMustReceipt");
    lblMustReceipt_ = {figureLabel(mustReceipt, 0, 1.1), named(new QLabel(QStringLiteral("판매 금액")), mustReceipt, 1),
                       figureLabel(mustReceipt, 2, largest),
                       named(new QLabel(QStringLiteral("할인, 절사 후 금액")), mustReceipt, 3)};
    lblGeneral_ = figureLabel(QStringLiteral("lblGeneral"), -1, 1.3);
    grid->setVerticalSpacing(4);
    grid->addWidget(lblMustReceipt_[1], 0, 0, Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(lblMustReceipt_[0], 0, 1);
    auto *toBePaid = new QHBoxLayout;
    toBePaid->addWidget(lblMustReceipt_[3]);
    toBePaid->addWidget(lblMustReceipt_[2], 1);
    grid->addLayout(toBePaid, 0, 2, 1, 3);
    lblOutstanding_ = noteLabel(QStringLiteral("lblOutstanding"));
    controls::setInk(lblOutstanding_, controls::Ink::Owed);
    lblOutstanding_->hide();
    grid->addWidget(lblOutstanding_, 1, 0, 1, 5);
    layOutEntries(grid, 2);
}

void frmSimpleReceipt::layOutEntries(QGridLayout *grid, int row)
{
    cboGeneralPercent_ = named(controls::withGuardedWheel(new QComboBox), QStringLiteral("cboGeneralPercent"));
    cboGeneralPercent_->setEditable(true);
    cboGeneralPercent_->setInsertPolicy(QComboBox::NoInsert);
    cboGeneralPercent_->setCompleter(nullptr);
    chkGeneralHalinConfirm_ =
        named(new controls::PushCheck(QStringLiteral("적용")), QStringLiteral("chkGeneralHalinConfirm"));
    txtGeneralHalInMoney_ = amountBox(QStringLiteral("txtGeneralHalInMoney"), fraNewSunap_);
    cboGeneralJeolsaGubun_ = named(controls::withGuardedWheel(new QComboBox), QStringLiteral("cboGeneralJeolsaGubun"));
    txtGeneralJeolSaMoney_ = amountBox(QStringLiteral("txtGeneralJeolSaMoney"), fraNewSunap_);
    for (int medium : {Cash, Card})
        txtGeneralSuNapMoney_[medium] = amountBoxOf(QStringLiteral("txtGeneralSuNapMoney"), medium);
    const QString whole = QStringLiteral("전액");
    const QString others = QStringLiteral("나머지");
    chkGeneralRemain2Money_ =
        makePushChecks(QStringLiteral("chkGeneralRemain2Money"), {whole, others, whole, others}, fraNewSunap_);
    chkAllSetting_ = makePushChecks(
        QStringLiteral("chkAllSetting"),
        {QStringLiteral("전액카드"), QStringLiteral("전액현금"), QStringLiteral("전액미수")}, fraNewSunap_);
    lblGeneralRemain_ = figureLabel(QStringLiteral("lblGeneralRemain"), -1, largest);
    mudFirstSunap_ = new MoneyUpDown(QStringLiteral("mudFirstSunap"), fraNewSunap_);
    chkBonin100_ = named(new QCheckBox(QStringLiteral("전액 본인부담으로")), QStringLiteral("chkBonin100"));
    chkGeneralRemainToHalin_ = named(new QCheckBox(QStringLiteral("잔액이 있는 경우 잔액을 할인으로 기록")),
                                     QStringLiteral("chkGeneralRemainToHalin"));
    chkGeneralRemainToMisuMoney_ = named(new QCheckBox(QStringLiteral("잔액이 있는 경우 잔액을 미수금에 기록")),
                                         QStringLiteral("chkGeneralRemainToMisuMoney"));

    addFormRow(grid, row, 0, QStringLiteral("수납할 금액"), lblGeneral_);
    grid->addWidget(chkBonin100_, row, 2, 1, 3);
    addFormRow(grid, row + 1, 0, QStringLiteral("할인율(%)"), cboGeneralPercent_);
    grid->addWidget(chkGeneralHalinConfirm_, row + 1, 2);
    addFormRow(grid, row + 2, 0, ledger::operatorText(ledger::Discount), txtGeneralHalInMoney_);
    addFormRow(grid, row + 3, 0, QStringLiteral("절사 단위"), cboGeneralJeolsaGubun_);
    addFormRow(grid, row + 4, 0, ledger::operatorText(ledger::Cut), txtGeneralJeolSaMoney_);
    for (int medium : {Cash, Card}) {
        addFormRow(grid, row + 5 + medium, 0, QString::fromUtf16(ledger::methods[std::size_t(medium)].text),
                   txtGeneralSuNapMoney_[medium]);
        for (int button : {0, 1})
            grid->addWidget(chkGeneralRemain2Money_[2 * medium + button], row + 5 + medium, 2 + button);
    }
    addFormRow(grid, row + 7, 0, QStringLiteral("잔액"), lblGeneralRemain_);
    lblRemainNote_ = noteLabel(QStringLiteral("lblRemainNote"));
    grid->addWidget(lblRemainNote_, row + 7, 2, 1, 3);
    grid->addWidget(mudFirstSunap_, row + 2, 2, 2, 3, Qt::AlignLeft | Qt::AlignVCenter);
    auto *allSettings = new QHBoxLayout;
    allSettings->setSpacing(grid->horizontalSpacing());
    for (controls::PushCheck *button : chkAllSetting_)
        allSettings->addWidget(button);
    grid->addLayout(allSettings, row + 8, 0, 1, 5);
    grid->addWidget(chkGeneralRemainToHalin_, row + 9, 0, 1, 5);
    grid->addWidget(chkGeneralRemainToMisuMoney_, row + 10, 0, 1, 5);
}

void frmSimpleReceipt::layOutOldFrame()
{
    fraOldSunap_ = named(new QGroupBox(QStringLiteral("수납 내역 수정"), this), QStringLiteral("fraOldSunap"));
    txtMoney_ = amountBox(QStringLiteral("txtMoney"), fraOldSunap_);
    mudEditSunap_ = new MoneyUpDown(QStringLiteral("mudEditSunap"), fraOldSunap_);
    auto *grid = new QGridLayout(fraOldSunap_);
    grid->setHorizontalSpacing(8);
    grid->setColumnStretch(1, 1);
    lblEditedRow_ = noteLabel(QStringLiteral("lblEditedRow"));
    lblZeroMoney_ = noteLabel(QStringLiteral("lblZeroMoney"));
    grid->addWidget(lblEditedRow_, 0, 0, 1, 3);
    grid->addLayout(dialogForm::layOutOperators(optOperator_, fraOldSunap_), 1, 0, 1, 3);
    addFormRow(grid, 2, 0, QStringLiteral("금액"), txtMoney_);
    grid->addWidget(mudEditSunap_, 2, 2);
    grid->addWidget(lblZeroMoney_, 3, 0, 1, 3);
}

void frmSimpleReceipt::setTabOrderOfWork()
{
    QList<QWidget *> order{head_.dtpTodat,          chkBonin100_,          cboGeneralPercent_,
                           chkGeneralHalinConfirm_, txtGeneralHalInMoney_, cboGeneralJeolsaGubun_,
                           txtGeneralJeolSaMoney_};
    for (int medium : {Cash, Card}) {
        order << txtGeneralSuNapMoney_[medium];
        for (int button : {0, 1})
            order << chkGeneralRemain2Money_[2 * medium + button];
    }
    order.append(QList<QWidget *>(chkAllSetting_.begin(), chkAllSetting_.end()));
    order << chkGeneralRemainToHalin_ << chkGeneralRemainToMisuMoney_;
    order.append(QList<QWidget *>(optOperator_.begin(), optOperator_.end()));
    order << txtMoney_ << cmdConfirm_ << cmdCancel_;
    setTabChain(order);
    giveSpokenNames(this);
}

void frmSimpleReceipt::setKeys()
{
    auto *keys = new DialogKeys(this, cmdConfirm_, cmdCancel_);
    constexpr int money = DialogKeys::MovesByArrows | DialogKeys::DigitsOnly | DialogKeys::SelectsOnFocus;
    keys->setHabits(cboGeneralPercent_, DialogKeys::DigitsOnly | DialogKeys::SelectsOnFocus);
    for (QLineEdit *box : {txtGeneralHalInMoney_, txtGeneralSuNapMoney_[Cash], txtGeneralSuNapMoney_[Card]}) {
        keys->setHabits(box, money);
        mudFirstSunap_->serve(box, MoneyUpDown::OnKey::Disable);
    }
    keys->setHabits(txtMoney_, money);
    mudEditSunap_->serve(txtMoney_, MoneyUpDown::OnKey::Disable);
}
