#include "products/DealerPane.h"

#include "data/clsSQL.h"
#include "forms/FormRow.h"
#include "platform/ado/Foresight.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"
#include "platform/controls/ShowText.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "session/modGlobalVars.h"

#include <QPointer>

using controls::InformationIcon;
using controls::MsgBox;

namespace {

using controls::GridColumn;

const QString listTitle = QStringLiteral("거래처목록");

std::vector<GridColumn> dealerColumns()
{
    using Kind = GridColumn::Kind;
    return {
        {QStringLiteral("CM_IsValid"), QStringLiteral("거래업체"), Kind::Check},
        {QStringLiteral("CM_Name"), QStringLiteral("거래처 이름"), Kind::Text, 130},
        {QStringLiteral("CM_RegNum"), QStringLiteral("등록번호"), Kind::Text, 100},
        {.field = QStringLiteral("CM_Address"), .caption = QStringLiteral("주소"), .width = 160, .fills = true},
        {QStringLiteral("CM_Tel"), QStringLiteral("전화번호"), Kind::Text, 95},
        {QStringLiteral("CM_EtcMemo"), QStringLiteral("메모"), Kind::Text, 120},
    };
}

controls::FindBar::Design dealerSearch()
{
    return {.name = QStringLiteral("Dealer"),
            .what = QStringLiteral("거래처"),
            .placeholder = QStringLiteral("거래처 검색 (초성, 이름, 번호)"),
            .fields = {},
            .reading = [] { return gcnnMasterDB->read(clsSQL::getDealerTextsSQL()); }};
}

} // namespace

DealerPane::DealerPane(SaleSession &session, PaneShell &shell, QWidget *parent)
    : RecordEditor(session, shell, session.rsCompanyMaster, {editCode::Dealer, QStringLiteral("거래처"), listTitle},
                   parent)
    , operations_(session)
{
    makeList(QStringLiteral("sspCompanyMaster"), 0, QStringLiteral("거래처"), QStringLiteral("tdbCompanyMaster"),
             dealerColumns());
    makeSearch(dealerSearch());
    makePanel(QStringLiteral("sspCompanyMaster"), 1);
    makeStrip(4, QStringLiteral("chkcmdCmpnyMstrAED"), QStringLiteral("chkcmdCmpnyMstrSave"), QStringLiteral("저장"));
    placeInPanel(makeFields());
    layOutListAndPanel(this, listFrame_, panel_);
    setTabChain({grid_, commands_[Add], commands_[Edit], commands_[Delete], txtCmCompanyName_, chkCmIsValid_, txtCmTel_,
                 txtCmRegNum_, txtCmAddress_, txtCmMemo_, saveButtons_[0], saveButtons_[1]});
    connectControls();
    DealerPane::resetPane();
}

QGridLayout *DealerPane::makeFields()
{
    using controls::named;
    const TextBoxHabits habits{.onFocus = OnFocus::CaretToEnd};
    txtCmCompanyName_ = named(new MoneyBox(habits), QStringLiteral("txtCmCompanyName"));
    chkCmIsValid_ = named(new QCheckBox(QStringLiteral("거래안함")), QStringLiteral("chkCmIsValid"));
    chkCmIsValid_->setAccessibleName(chkCmIsValid_->text());
    txtCmTel_ = named(new MoneyBox(habits), QStringLiteral("txtCmTel"));
    txtCmRegNum_ = named(new MoneyBox(habits), QStringLiteral("txtCmRegNum"));
    txtCmAddress_ = named(new MoneyBox(habits), QStringLiteral("txtCmAddress"));
    txtCmMemo_ = named(new MemoBox({.caretToEndOnChange = true}), QStringLiteral("txtCmMemo"));

    auto *form = new QGridLayout;
    form->setVerticalSpacing(3);
    addFormRow(form, 0, 0, QStringLiteral("거래처: "), txtCmCompanyName_);
    form->addWidget(chkCmIsValid_, 0, 2);
    addFormRow(form, 1, 0, QStringLiteral("전화번호:"), txtCmTel_, 2);
    addFormRow(form, 2, 0, QStringLiteral("사업자번호: "), txtCmRegNum_, 2);
    addFormRow(form, 3, 0, QStringLiteral("주소:"), txtCmAddress_, 2);
    addFormRow(form, 4, 0, QStringLiteral("메모:"), txtCmMemo_, 2);
    form->setColumnStretch(1, 1);
    form->setRowStretch(4, 1);
    return form;
}

void DealerPane::loadCompanyMaster()
{
    if (!rows_)
        return;
    const QPointer<DealerPane> alive(this); // a row that is shown may open a box
    runtime::Attempt attempt;
    attempt([&] { list_.load(clsSQL().getCmpnyMstrSQL()); });
    if (alive && attempt.failed() && !inEdit())
        resetPane();
}

void DealerPane::tell(ado::Foresight &next)
{
    next.open(clsSQL().getCmpnyMstrSQL(), ado::CursorType::Keyset);
}

void DealerPane::showRow(const ado::Recordset &dealer)
{
    using runtime::text;
    controls::showText(txtCmCompanyName_, text(dealer[QStringLiteral("CM_Name")]));
    controls::showText(txtCmRegNum_, text(dealer[QStringLiteral("CM_RegNum")]));
    controls::showText(txtCmAddress_, text(dealer[QStringLiteral("CM_Address")]));
    controls::showText(txtCmTel_, text(dealer[QStringLiteral("CM_Tel")]));
    txtCmMemo_->setText(text(dealer[QStringLiteral("CM_EtcMemo")]));
    chkCmIsValid_->setChecked(!runtime::isTrue(dealer[QStringLiteral("CM_IsValid")]));
}

void DealerPane::resetPane()
{
    for (QLineEdit *box : {txtCmCompanyName_, txtCmRegNum_, txtCmAddress_, txtCmTel_})
        box->clear();
    txtCmMemo_->clear();
    chkCmIsValid_->setChecked(false);
}

void DealerPane::addRow()
{
    mode_ = Adds;
    resetPane();
    enterEdit(txtCmCompanyName_);
}

void DealerPane::editRow()
{
    mode_ = Neither;
    if (!hasRow())
        return;
    edited_ = DealerKey(rows_->bookmark());
    enterEdit(txtCmCompanyName_);
    mode_ = Changes;
}

void DealerPane::deleteRow()
{
    mode_ = Neither;
    if (!hasRow())
        return;
    const DealerKey dealer(rows_->bookmark());
    const QString title = QStringLiteral("거래처삭제");
    if (!agrees(QStringLiteral("거래처를 삭제하시겠습니까?"), title))
        return;
    tellIfGone(dealer.bookmark(), [&] {
        const DealerOperations::Deletion deletion = operations_.remove(dealer);
        if (deletion == DealerOperations::Deletion::InUse)
            MsgBox(QStringLiteral("해당 거래처의 이름으로 주문내역이 있습니다. 거래없음을 체크하여 사용중지 하십시오."),
                   InformationIcon, title, this);
        if (deletion == DealerOperations::Deletion::Deleted)
            tellDone(QStringLiteral("삭제"));
    });
}

DealerEdit DealerPane::typed() const
{
    return {txtCmCompanyName_->text(), txtCmRegNum_->text(), txtCmAddress_->text(),
            txtCmTel_->text(),         txtCmMemo_->text(),   chkCmIsValid_->isChecked()};
}

void DealerPane::saveRow()
{
    const bool changes = mode_ == Changes;
    SaveOutcome outcome = SaveOutcome::Saved;
    if (mode_ == Adds)
        outcome = operations_.add(typed());
    else if (changes)
        outcome = operations_.change(edited_, typed());
    if (outcome == SaveOutcome::Refused)
        refuse(QStringLiteral("거래처이름을 입력하십시오."), InformationIcon, listTitle, txtCmCompanyName_);
    else
        endSave(outcome, changes ? edited_.bookmark() : ado::Bookmark());
}

ControlGroup DealerPane::editGroup() const
{
    const ControlGroup colCompany{txtCmCompanyName_, chkCmIsValid_, txtCmTel_, txtCmRegNum_, txtCmAddress_, txtCmMemo_};
    return colCompany;
}

QList<EntryColor> DealerPane::fieldColors() const
{
    const auto window = controls::Ground::Field;
    return {
        {txtCmCompanyName_, controls::Ground::Needed},
        {txtCmTel_, window},
        {txtCmRegNum_, window},
        {txtCmAddress_, window},
        {txtCmMemo_, window},
        {chkCmIsValid_, controls::Ground::Face},
    };
}
