#include "forms/FormRow.h"
#include "forms/clsMyFunctions.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/Named.h"
#include "products/IncomingPane.h"

namespace {

using controls::GridColumn;

std::vector<GridColumn> incomingColumns()
{
    using Kind = GridColumn::Kind;
    return {
        {QStringLiteral("PM_PK"), QStringLiteral("PM_PK"), Kind::Number, 60, false},
        {QStringLiteral("CM_PK"), QStringLiteral("CM_PK"), Kind::Number, 60, false},
        {QStringLiteral("IN_Count"), QStringLiteral("구매수량"), Kind::Number},
        {QStringLiteral("IN_UnitPrice"), QStringLiteral("원/개당"), Kind::Money},
        {QStringLiteral("IN_Total"), QStringLiteral("총액"), Kind::Money},
        {QStringLiteral("IN_Date"), QStringLiteral("날짜"), Kind::Date},
        {QStringLiteral("IN_HalinTotal"), QStringLiteral("할인가격"), Kind::Money},
        {.field = QStringLiteral("IN_EtcMemo"), .caption = QStringLiteral("메모"), .width = 90, .fills = true},
    };
}

} // namespace

void IncomingPane::makeControls()
{
    const QString frame = QStringLiteral("sspProductIncoming");
    makeList(frame, 0, QStringLiteral("거래내역"), QStringLiteral("tdbProductIncoming"), incomingColumns());
    makePanel(frame, 1);
    makeStrip(3, QStringLiteral("chkcmdIncomingAED"), QStringLiteral("chkcmdIncomingSave"), QStringLiteral("저장"));
    placeInPanel(makeFields());
}

QGridLayout *IncomingPane::makeFields()
{
    using controls::named;
    txtIncCount_ = named(new MoneyBox({.onFocus = OnFocus::SelectAll}), QStringLiteral("txtIncCount"));
    txtIncCount_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    udIincomingCount_ = new controls::Stepper(QStringLiteral("udIincomingCount"));
    txtIncPricePerUnit_ = named(new MoneyBox, QStringLiteral("txtIncPricePerUnit"));
    txtIncHalinTotal_ = named(new MoneyBox, QStringLiteral("txtIncHalinTotal"));
    txtIncPriceTotal_ = named(new QLineEdit, QStringLiteral("txtIncPriceTotal"));
    txtIncPriceTotal_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    txtIncCompanyName_ = named(new QLineEdit, QStringLiteral("txtIncCompanyName"));
    chkCmdIncSelectCompany_ =
        named(new controls::PushCheck(QStringLiteral("거래처선택")), QStringLiteral("chkCmdIncSelectCompany"));
    dtpIncDate_ = named(new controls::DateEdit, QStringLiteral("dtpIncDate"));
    txtIncMemo_ = named(new MemoBox({.onFocus = OnFocus::CaretToEnd}), QStringLiteral("txtIncMemo"));
    clsMyFunctions::keepReadOnly(txtIncPriceTotal_);
    clsMyFunctions::keepReadOnly(txtIncCompanyName_);

    auto *form = new QGridLayout;
    form->setVerticalSpacing(3);
    addFormRow(form, 0, 0, QStringLiteral("구매수량:"), txtIncCount_);
    form->addWidget(udIincomingCount_, 0, 2, Qt::AlignLeft);
    addFormRow(form, 1, 0, QStringLiteral("개당가격:"), txtIncPricePerUnit_);
    addFormRow(form, 2, 0, QStringLiteral("할인총액:"), txtIncHalinTotal_);
    addFormRow(form, 3, 0, QStringLiteral("총액:"), txtIncPriceTotal_);
    // Above the name that it brings, which takes the whole width: names of firms are long.
    form->addWidget(chkCmdIncSelectCompany_, 3, 2);
    addFormRow(form, 4, 0, QStringLiteral("거래처: "), txtIncCompanyName_, 2);
    addFormRow(form, 5, 0, QStringLiteral("날짜:"), dtpIncDate_);
    addFormRow(form, 6, 0, QStringLiteral("메모: "), txtIncMemo_, 2);
    form->setColumnStretch(1, 1);
    form->setRowStretch(6, 1);
    return form;
}

ControlGroup IncomingPane::editGroup() const
{
    const ControlGroup colIncoming{txtIncCount_,      udIincomingCount_,  txtIncPricePerUnit_, txtIncHalinTotal_,
                                   txtIncPriceTotal_, txtIncCompanyName_, dtpIncDate_,         chkCmdIncSelectCompany_,
                                   txtIncMemo_,       saveButtons_[0],    saveButtons_[1]};
    return colIncoming;
}

QList<EntryColor> IncomingPane::fieldColors() const
{
    const auto required = controls::Ground::Needed;
    const auto window = controls::Ground::Field;
    return {
        {txtIncCount_, required},     {txtIncPricePerUnit_, required}, {txtIncHalinTotal_, required},
        {txtIncCompanyName_, window}, {txtIncMemo_, window},           {txtIncPriceTotal_, controls::Ground::Reckoned},
    };
}
