#include "products/DealerPane.h"

#include "data/clsSQL.h"
#include "forms/FormRow.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"
#include "platform/controls/ShowText.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Log.h"
#include "products/GoneRow.h"

#include <QPointer>
#include <QVBoxLayout>

using controls::InformationIcon;
using controls::MsgBox;

namespace {

using controls::GridColumn;

const QString dealerEditCode = QStringLiteral("12");
const QString listTitle = QStringLiteral("거래처목록");

std::vector<GridColumn> dealerColumns()
{
    using Kind = GridColumn::Kind;
    return {
        {QStringLiteral("CM_IsValid"), QStringLiteral("거래업체"), Kind::Check, 65},
        {QStringLiteral("CM_Name"), QStringLiteral("거래처 이름"), Kind::Text, 130},
        {QStringLiteral("CM_RegNum"), QStringLiteral("등록번호"), Kind::Text, 100},
        {QStringLiteral("CM_Address"), QStringLiteral("주소"), Kind::Text, 160},
        {QStringLiteral("CM_Tel"), QStringLiteral("전화번호"), Kind::Text, 95},
        {QStringLiteral("CM_EtcMemo"), QStringLiteral("메모"), Kind::Text, 120},
    };
}

} // namespace

DealerPane::DealerPane(SaleSession &session, PaneShell &shell, QWidget *parent)
    : QWidget(parent)
    , session_(session)
    , shell_(shell)
    , operations_(session)
    , list_(session.rsCompanyMaster)
{
    makeList();
    makePanel();
    layOutListAndPanel(this, sspCompanyMaster_[0], nullptr, sspCompanyMaster_[1]);
    setTabChain({tdbCompanyMaster_, chkcmdCmpnyMstrAED_[0], chkcmdCmpnyMstrAED_[1], chkcmdCmpnyMstrAED_[2],
                 txtCmCompanyName_, chkCmIsValid_, txtCmTel_, txtCmRegNum_, txtCmAddress_, txtCmMemo_,
                 chkcmdCmpnyMstrSave_[0], chkcmdCmpnyMstrSave_[1]});
    connectControls();
    resetPane();
}

void DealerPane::connectControls()
{
    connect(tdbCompanyMaster_, &controls::RecordsetGrid::rowChange, this, &DealerPane::fillPanel);
    chkcmdCmpnyMstrAED_[0]->onPush(this, [this] { addDealer(); });
    chkcmdCmpnyMstrAED_[1]->onPush(this, [this] { editDealer(); });
    chkcmdCmpnyMstrAED_[2]->onPush(this, [this] { deleteDealer(); });
    chkcmdCmpnyMstrSave_[0]->onPush(this, [this] { saveDealer(); });
    chkcmdCmpnyMstrSave_[1]->onPush(this, [this] { endEdit(); });
}

void DealerPane::makeList()
{
    sspCompanyMaster_[0] = makePanelFrame(QStringLiteral("sspCompanyMaster"), 0, QStringLiteral("거래처"), this);
    auto *grid = new controls::RecordsetGrid(sspCompanyMaster_[0]);
    tdbCompanyMaster_ = controls::named(grid, QStringLiteral("tdbCompanyMaster"));
    list_.setGrid(grid);
    grid->setAccessibleName(QStringLiteral("거래처"));
    grid->setColumns(dealerColumns());
    auto *layout = new QVBoxLayout(sspCompanyMaster_[0]);
    layout->addWidget(grid);
}

void DealerPane::makePanel()
{
    sspCompanyMaster_[1] = makePanelFrame(QStringLiteral("sspCompanyMaster"), 1, QString(), this);
    makeStrip();
    auto *layout = new QVBoxLayout(sspCompanyMaster_[1]);
    layout->addWidget(elTranMnu_);
    layout->addLayout(makeFields(), 1);
}

void DealerPane::makeStrip()
{
    elTranMnu_ = controls::named(new QWidget(sspCompanyMaster_[1]), QStringLiteral("elTranMnu"), 4);
    chkcmdCmpnyMstrAED_ =
        makePushChecks(QStringLiteral("chkcmdCmpnyMstrAED"),
                       {QStringLiteral("추가"), QStringLiteral("수정"), QStringLiteral("삭제")}, elTranMnu_);
    chkcmdCmpnyMstrSave_ = makePushChecks(QStringLiteral("chkcmdCmpnyMstrSave"),
                                          {QStringLiteral("저장"), QStringLiteral("취소")}, elTranMnu_);
    layOutStrip(elTranMnu_, chkcmdCmpnyMstrAED_, chkcmdCmpnyMstrSave_);
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
    if (!session_.rsCompanyMaster)
        return;
    const QPointer<DealerPane> alive(this); // a row that is shown may open a box
    runtime::Attempt attempt;
    attempt([&] { list_.load(clsSQL().getCmpnyMstrSQL()); });
    if (alive && attempt.failed() && !inEdit())
        resetPane();
}

void DealerPane::loadIfClosed()
{
    if (!isLoaded())
        loadCompanyMaster();
}

/// Whether the dealer is still there; then it is on view.
bool DealerPane::readListAnew(DealerKey dealer)
{
    const bool found = list_.requeryQuietlyAt(dealer.bookmark());
    fillPanel();
    return found;
}

void DealerPane::leaveGone()
{
    const QString told = leaveGoneRow(list_, QStringLiteral("거래처"));
    resetPane();
    MsgBox(told, InformationIcon, listTitle, this);
}

void DealerPane::fillPanel()
{
    if (list_.comesAnew() || inEdit() || !isLoaded())
        return;
    const ado::Recordset &dealer = *session_.rsCompanyMaster;
    if (!dealer.hasCurrent()) {
        resetPane();
        return;
    }
    if (dealer.isGone()) {
        leaveGone();
        return;
    }
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

void DealerPane::addDealer()
{
    intCompanyEditMode_ = 0;
    resetPane();
    shell_.enterEditMode(dealerEditCode);
    txtCmCompanyName_->setFocus();
}

void DealerPane::editDealer()
{
    intCompanyEditMode_ = -1;
    if (!SaleSession::hasCurrent(session_.rsCompanyMaster))
        return;
    edited_ = DealerKey(session_.rsCompanyMaster->bookmark());
    shell_.enterEditMode(dealerEditCode);
    txtCmCompanyName_->setFocus();
    intCompanyEditMode_ = 1;
}

void DealerPane::deleteDealer()
{
    intCompanyEditMode_ = -1;
    if (!SaleSession::hasCurrent(session_.rsCompanyMaster))
        return;
    const DealerKey dealer(session_.rsCompanyMaster->bookmark());
    const QString title = QStringLiteral("거래처삭제");
    const QPointer<DealerPane> alive(this);
    if (MsgBox(QStringLiteral("거래처를 삭제하시겠습니까?"), controls::YesNo | InformationIcon, title, this)
            != controls::Answer::Yes
        || !alive)
        return;
    try {
        if (operations_.remove(dealer) == DealerOperations::Deletion::InUse)
            MsgBox(QStringLiteral("해당 거래처의 이름으로 주문내역이 있습니다. 거래없음을 체크하여 사용중지 하십시오."),
                   InformationIcon, title, this);
    } catch (const runtime::RuntimeError &error) {
        if (!isConflict(error) || readListAnew(dealer))
            throw;
        runtime::trapped();
        leaveGone();
    }
}

DealerEdit DealerPane::typed() const
{
    return {txtCmCompanyName_->text(), txtCmRegNum_->text(), txtCmAddress_->text(),
            txtCmTel_->text(),         txtCmMemo_->text(),   chkCmIsValid_->isChecked()};
}

void DealerPane::saveDealer()
{
    const bool changes = intCompanyEditMode_ == 1;
    SaveOutcome outcome = SaveOutcome::Saved;
    if (intCompanyEditMode_ == 0)
        outcome = operations_.add(typed());
    else if (changes)
        outcome = operations_.change(edited_, typed());
    const QPointer<DealerPane> alive(this);
    if (outcome == SaveOutcome::Refused) {
        MsgBox(QStringLiteral("거래처이름을 입력하십시오."), InformationIcon, listTitle, this);
        if (alive)
            txtCmCompanyName_->setFocus();
        return;
    }
    const bool failed = outcome == SaveOutcome::Failed;
    if (failed)
        MsgBox(QStringLiteral("저장을 하지 못했습니다. 서버와의 연결을 확인하십시오."), InformationIcon,
               QStringLiteral("저장"), this);
    if (alive)
        endEdit(failed && changes ? edited_ : DealerKey());
}

/// Errors are trapped: the edit ends even if the list cannot be read.
void DealerPane::endEdit(DealerKey dealer)
{
    shell_.leaveEditMode(dealerEditCode);
    shell_.paintEntryColors();
    const QPointer<DealerPane> alive(this); // a row that is shown may open a box
    runtime::Attempt attempt;
    attempt([&] {
        if (!isLoaded())
            loadCompanyMaster();
        else if (dealer)
            readListAnew(dealer);
        else
            session_.rsCompanyMaster->Requery();
    });
    if (!alive)
        return;
    tdbCompanyMaster_->setFocus();
    intCompanyEditMode_ = -1;
}

bool DealerPane::abandonEdit()
{
    const bool open = inEdit();
    if (open)
        endEdit();
    return open;
}

EditModeTable DealerPane::editMode() const
{
    using controls::SystemColor;
    EditModeTable table;
    table.code = dealerEditCode;
    table.containers = {elTranMnu_, sspCompanyMaster_[1]};
    const ControlGroup colCompany{txtCmCompanyName_, chkCmIsValid_, txtCmTel_, txtCmRegNum_, txtCmAddress_, txtCmMemo_};
    table.group = colCompany;
    table.commands = {chkcmdCmpnyMstrAED_.begin(), chkcmdCmpnyMstrAED_.end()};
    table.saveButtons = {chkcmdCmpnyMstrSave_.begin(), chkcmdCmpnyMstrSave_.end()};

    const QColor window = controls::systemColor(SystemColor::Window);
    table.editColors = {
        {txtCmCompanyName_, controls::systemColor(SystemColor::InfoBackground)},
        {txtCmTel_, window},
        {txtCmRegNum_, window},
        {txtCmAddress_, window},
        {txtCmMemo_, window},
        {chkCmIsValid_, controls::systemColor(SystemColor::ButtonFace)},
    };
    table.entryColors = table.editColors;
    for (const EntryColor &color : table.editColors)
        table.entryControls += color.control;
    return table;
}
