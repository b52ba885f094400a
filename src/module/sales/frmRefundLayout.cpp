// The form of the return: which controls it has and where they stand.
#include "sales/frmRefund.h"

#include "forms/FormRow.h"
#include "forms/SpokenNames.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/DateEdit.h"
#include "platform/controls/Named.h"

#include <QVBoxLayout>

using controls::named;

namespace {

/// Captions and boxes of both panes stand in line.
QGridLayout *twoColumnsIn(QGroupBox *frame)
{
    auto *grid = new QGridLayout(frame);
    grid->setHorizontalSpacing(8);
    const int captions = frame->fontMetrics().horizontalAdvance(QStringLiteral("단가할인:")) + 2;
    grid->setColumnMinimumWidth(0, captions);
    grid->setColumnMinimumWidth(2, captions);
    grid->setColumnMinimumWidth(4, controls::Stepper(QString()).sizeHint().width());
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return grid;
}

} // namespace

void frmRefund::createControls()
{
    setObjectName(QStringLiteral("frmRefund"));
    setWindowTitle(QStringLiteral("반품"));
    auto *form = new QVBoxLayout(this);
    form->setSizeConstraint(QLayout::SetFixedSize);
    form->setSpacing(8);
    form->addWidget(makeSoldPane());
    form->addWidget(makeRefundPane());
    form->addLayout(layOutButtons());
    setTabChain({dtpRfndDate_, txtRfndUnitCount_, txtRfndUnitSalePrice_, txtRfndMemo_, chkCmdSave_, chkCmdCancel_});
    giveSpokenNames(this);
}

QGroupBox *frmRefund::makeSoldPane()
{
    auto *frame = new QGroupBox(QStringLiteral("판매한 물품정보"), this);
    dtpUnitSoldDate_ = named(new controls::DateEdit, QStringLiteral("dtpUnitSoldDate"));
    dtpUnitSoldDate_->setReadOnly(true);
    dtpUnitSoldDate_->setCalendarPopup(false);
    dtpUnitSoldDate_->setButtonSymbols(QAbstractSpinBox::NoButtons);
    dtpUnitSoldDate_->setFrame(false);
    dtpUnitSoldDate_->setFocusPolicy(Qt::ClickFocus);
    controls::setGround(dtpUnitSoldDate_, controls::Ground::Locked);
    txtUnitName_ = makeShownBox(QStringLiteral("txtUnitName"));
    txtUnitPrice_ = makeShownBox(QStringLiteral("txtUnitPrice"));
    txtUnitDiscount_ = makeShownBox(QStringLiteral("txtUnitDiscount"));
    txtUnitCount_ = makeShownBox(QStringLiteral("txtUnitCount"));
    for (QLineEdit *number : {txtUnitPrice_, txtUnitDiscount_, txtUnitCount_})
        number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    QGridLayout *grid = twoColumnsIn(frame);
    addFormRow(grid, 0, 0, QStringLiteral("판매일:"), dtpUnitSoldDate_);
    addFormRow(grid, 0, 2, QStringLiteral("수량:"), txtUnitCount_);
    addFormRow(grid, 1, 0, QStringLiteral("물품명:"), txtUnitName_, 3);
    addFormRow(grid, 2, 0, QStringLiteral("단가:"), txtUnitPrice_);
    addFormRow(grid, 2, 2, QStringLiteral("단가할인:"), txtUnitDiscount_);
    return frame;
}

QGroupBox *frmRefund::makeRefundPane()
{
    auto *frame = new QGroupBox(QStringLiteral("반품기록"), this);
    dtpRfndDate_ = named(new controls::DateEdit, QStringLiteral("dtpRfndDate"));
    // Typed over as a whole; nothing keeps the typing to digits.
    txtRfndUnitCount_ = named(new MoneyBox({.onFocus = OnFocus::SelectAll}), QStringLiteral("txtRfndUnitCount"));
    txtRfndUnitCount_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    udNoOfProdPlusMinus_ = new controls::Stepper(QStringLiteral("udNoOfProdPlusMinus"), -1, frame);
    udNoOfProdPlusMinus_->setAccessibleName(QStringLiteral("수량 1씩"));
    // The focus leaves the price as it is; the other habits are those of all money boxes.
    txtRfndUnitSalePrice_ =
        named(new MoneyBox({true, true, true, OnFocus::Nothing}), QStringLiteral("txtRfndUnitSalePrice"));
    txtRfndMemo_ = named(new MoneyBox(TextBoxHabits{}), QStringLiteral("txtRfndMemo"));
    txtRfndMemo_->setMinimumWidth(txtRfndMemo_->fontMetrics().averageCharWidth() * 44);

    QGridLayout *grid = twoColumnsIn(frame);
    addFormRow(grid, 0, 0, QStringLiteral("날짜:"), dtpRfndDate_);
    addFormRow(grid, 0, 2, QStringLiteral("수량:"), txtRfndUnitCount_);
    grid->addWidget(udNoOfProdPlusMinus_, 0, 4);
    addFormRow(grid, 1, 0, QStringLiteral("판매단가:"), txtRfndUnitSalePrice_);
    addFormRow(grid, 2, 0, QStringLiteral("메모:"), txtRfndMemo_, 4);
    return frame;
}

QLayout *frmRefund::layOutButtons()
{
    chkCmdSave_ = named(new controls::PushCheck(QStringLiteral("저 장"), this), QStringLiteral("chkCmdSave"));
    chkCmdCancel_ = named(new controls::PushCheck(QStringLiteral("취 소"), this), QStringLiteral("chkCmdCancel"));
    QFont strong = chkCmdSave_->font();
    strong.setBold(true);
    chkCmdSave_->setFont(strong);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    for (controls::PushCheck *button : {chkCmdSave_, chkCmdCancel_}) {
        button->setAccessibleName(button->text());
        button->setMinimumSize(110, 32);
        buttons->addWidget(button);
    }
    return buttons;
}
