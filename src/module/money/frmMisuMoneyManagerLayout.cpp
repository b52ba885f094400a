// The form of the outstanding money: which controls it has and where they stand.
#include "money/frmMisuMoneyManager.h"

#include "forms/FormRow.h"
#include "money/DialogForm.h"
#include "money/DialogKeys.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/Named.h"

#include <QHeaderView>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

using controls::named;
using dialogForm::Holds;
using dialogForm::readOnlyBox;

namespace {

constexpr QSize outstandingListSize{680, 420};

std::vector<controls::GridColumn> outstandingColumns()
{
    using Kind = controls::GridColumn::Kind;
    const QString money = QStringLiteral("##,##0");
    // clang-format off
    return {
        {.field = QStringLiteral("name"), .caption = QStringLiteral("이름"), .width = 104, .fills = true},
        {.field = QStringLiteral("sn"), .caption = QStringLiteral("챠트번호"), .width = 96},
        {.field = QStringLiteral("OrdM_Date"), .caption = QStringLiteral("날짜"), .kind = Kind::Date, .width = 92},
        {.field = QStringLiteral("OrdM_HalinTotal"), .caption = QStringLiteral("할인금액"), .kind = Kind::Money, .width = 104, .format = money},
        {.field = QStringLiteral("OrdM_Total"), .caption = QStringLiteral("판매총액"), .kind = Kind::Money, .width = 104, .format = money},
        {.field = QStringLiteral("OrdM_Misugum"), .caption = QStringLiteral("미수금"), .kind = Kind::Money, .width = 104, .format = money},
    };
    // clang-format on
}

} // namespace

void frmMisuMoneyManager::createControls()
{
    setObjectName(QStringLiteral("frmMisuMoneyManager"));
    setWindowTitle(QStringLiteral("미수금 관리"));
    makeGrid();
    auto *form = new QVBoxLayout(this);
    form->setSpacing(8);
    form->addWidget(dgReceiptView_, 1);
    form->addLayout(layOutTotals());
    form->addLayout(layOutButtons());
    setTabChain({dgReceiptView_, cmdMisuMoneyPay_, cmdMisuMoneySend2Excel_, cmdClose_});
    resize(outstandingListSize);
}

void frmMisuMoneyManager::makeGrid()
{
    dgReceiptView_ = named(new controls::RecordsetGrid(this), QStringLiteral("dgReceiptView"));
    dgReceiptView_->setAccessibleName(QStringLiteral("미수금 목록"));
    dgReceiptView_->setColumns(outstandingColumns());
    dgReceiptView_->setEmptyText(QStringLiteral("미수금이 있는 거래가 없습니다."));
    dgReceiptView_->horizontalHeader()->setSortIndicatorShown(true);
    dgReceiptView_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    // The selected row looks like a window in front while the list has the focus, like a button while it has not.
    controls::followColors(dgReceiptView_, [list = dgReceiptView_] {
        const auto inFront = controls::colors(controls::Ground::Accent);
        const auto behind = controls::colors(controls::Ground::Face);
        QPalette selection = list->palette();
        selection.setColor(QPalette::Active, QPalette::Highlight, inFront.back);
        selection.setColor(QPalette::Active, QPalette::HighlightedText, inFront.text);
        selection.setColor(QPalette::Inactive, QPalette::Highlight, behind.back);
        selection.setColor(QPalette::Inactive, QPalette::HighlightedText, behind.text);
        list->setPalette(selection);
    });
}

QLayout *frmMisuMoneyManager::layOutTotals()
{
    txtCount_ = readOnlyBox(QStringLiteral("txtCount"), Holds::Number, this);
    txtTotal_ = readOnlyBox(QStringLiteral("txtTotal"), Holds::Money, this);
    txtCount_->setFixedWidth(dialogForm::amountWidth(*txtCount_) / 2);
    QFont strong = txtTotal_->font();
    strong.setBold(true);
    txtTotal_->setFont(strong);
    txtTotal_->setFixedWidth(dialogForm::amountWidth(*txtTotal_) + 24);
    auto *totals = new QGridLayout;
    totals->setHorizontalSpacing(8);
    totals->setColumnStretch(0, 1);
    totals->setColumnMinimumWidth(3, 16);
    addFormRow(totals, 0, 1, QStringLiteral("건수"), txtCount_);
    addFormRow(totals, 0, 4, QStringLiteral("미수금 합계"), txtTotal_);
    return totals;
}

QLayout *frmMisuMoneyManager::layOutButtons()
{
    cmdMisuMoneyPay_ =
        named(new controls::PushCheck(QStringLiteral("미수금 수납"), this), QStringLiteral("cmdMisuMoneyPay"));
    cmdMisuMoneySend2Excel_ = named(new QPushButton(QStringLiteral("미수금 목록 Excel로 보내기"), this),
                                    QStringLiteral("cmdMisuMoneySend2Excel"));
    cmdMisuMoneySend2Excel_->setEnabled(false); // quirk (docs/architecture.md): nothing to do
    cmdClose_ = named(new QPushButton(QStringLiteral("닫기(F12)"), this), QStringLiteral("cmdClose"));
    dialogForm::makeStrong(cmdMisuMoneyPay_);
    auto *buttons = new QHBoxLayout;
    for (QPushButton *button : {static_cast<QPushButton *>(cmdMisuMoneyPay_), cmdMisuMoneySend2Excel_, cmdClose_}) {
        button->setMinimumSize(std::max(110, button->fontMetrics().horizontalAdvance(button->text()) + 28), 32);
        button->setAccessibleName(button->text());
        if (button == cmdClose_)
            buttons->addStretch();
        buttons->addWidget(button);
    }
    return buttons;
}

void frmMisuMoneyManager::setKeys()
{
    new DialogKeys(this, cmdClose_, nullptr);
    // Behind those keys, so that it is asked first.
    dgReceiptView_->installEventFilter(this);
    dgReceiptView_->viewport()->installEventFilter(this);
}
