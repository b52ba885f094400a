#include "products/IncomingPane.h"

#include "data/clsSQL.h"
#include "forms/FormRow.h"
#include "forms/clsNumberRelated.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Modal.h"
#include "platform/controls/ShowText.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Log.h"
#include "products/GoneRow.h"
#include "products/frmDealerSelect.h"
#include "session/modGlobalVars.h"

using controls::InformationIcon;
using controls::MsgBox;

namespace {

const QString incomingEditCode = QStringLiteral("11");
const QString incomingTitle = QStringLiteral("물품구매내역");

double pureNumber(const QLineEdit *box)
{
    return runtime::CDbl(clsNumberRelated().GetPureNumber(box->text()));
}

double valOf(const QVariant &value)
{
    return runtime::Val(runtime::text(value));
}

QString moneyOf(const QVariant &value)
{
    return runtime::Format(valOf(value), runtime::strMoneyFormat);
}

} // namespace

IncomingPane::IncomingPane(SaleSession &session, PaneShell &shell, QWidget *parent)
    : QWidget(parent)
    , session_(session)
    , shell_(shell)
    , operations_(session)
    , list_(session.rsProductIncoming)
{
    makeList();
    makeStrip();
    makePanel();
    connectFields();
    connectButtons();
    layOutListAndPanel(this, sspProductIncoming_[0], elTranMnu_, sspProductIncoming_[1]);
    setTabChain({tdbProductIncoming_, chkcmdIncomingAED_[0], chkcmdIncomingAED_[1], chkcmdIncomingAED_[2], txtIncCount_,
                 txtIncPricePerUnit_, txtIncHalinTotal_, txtIncPriceTotal_, chkCmdIncSelectCompany_, txtIncCompanyName_,
                 dtpIncDate_, txtIncMemo_, chkcmdIncomingSave_[0], chkcmdIncomingSave_[1]});
    resetPane();
}

void IncomingPane::connectFields()
{
    for (const QLineEdit *box : {static_cast<QLineEdit *>(txtIncCount_), static_cast<QLineEdit *>(txtIncPricePerUnit_),
                                 static_cast<QLineEdit *>(txtIncHalinTotal_)})
        connect(box, &QLineEdit::textChanged, this, &IncomingPane::recalculateTotal);
    connect(txtIncPriceTotal_, &QLineEdit::textChanged, this, [this](const QString &typed) {
        showMoney(txtIncPriceTotal_, clsNumberRelated().GetPureNumber(runtime::Trim(typed)));
    });
    controls::onEvent(udIincomingCount_, &controls::Stepper::up, this, [this] { stepCount(1); });
    controls::onEvent(udIincomingCount_, &controls::Stepper::down, this, [this] { stepCount(-1); });
}

// The discount is on the whole purchase, not per unit; nothing stops a negative total.
void IncomingPane::recalculateTotal()
{
    const double total = pureNumber(txtIncCount_) * pureNumber(txtIncPricePerUnit_) - pureNumber(txtIncHalinTotal_);
    txtIncPriceTotal_->setText(runtime::Format(total, runtime::strMoneyFormat));
}

void IncomingPane::stepCount(int by)
{
    const double count = runtime::Val(txtIncCount_->text());
    if (by > 0 || count > 0)
        txtIncCount_->setText(runtime::text(count + by));
}

void IncomingPane::connectButtons()
{
    connect(tdbProductIncoming_, &controls::RecordsetGrid::rowChange, this, &IncomingPane::fillPanel);
    chkcmdIncomingAED_[0]->onPush(this, [this] { addIncoming(); });
    chkcmdIncomingAED_[1]->onPush(this, [this] { editIncoming(); });
    chkcmdIncomingAED_[2]->onPush(this, [this] { deleteIncoming(); });
    chkcmdIncomingSave_[0]->onPush(this, [this] { saveIncoming(); });
    chkcmdIncomingSave_[1]->onPush(this, [this] { endEdit(); });
    chkCmdIncSelectCompany_->onPush(this, [this] { selectDealer(); });
}

void IncomingPane::loadProductIncoming(ProductKey product)
{
    product_ = product;
    // The product list may be read again during an edit: the purchase in edit stays, and this list follows afterwards.
    if (inEdit())
        return;
    if (!session_.rsProductIncoming)
        return;
    list_.close();
    loaded_ = {};
    if (!product) {
        resetPane();
        return;
    }
    const QPointer<IncomingPane> alive(this); // a row that is shown may open a box
    try {
        list_.load(clsSQL().getProdIncomingSQL(product.number()));
    } catch (const runtime::RuntimeError &) {
        resetPane();
        throw;
    }
    if (alive)
        loaded_ = product;
}

void IncomingPane::loadIfClosed()
{
    if (isLoaded() || !product_)
        return;
    runtime::Attempt attempt;
    attempt([this] { loadProductIncoming(product_); });
}

/// Whether the purchase is still there; then it is on view.
bool IncomingPane::readListAnew(IncomingKey purchase)
{
    const bool found = list_.requeryQuietlyAt(purchase.bookmark());
    fillPanel();
    return found;
}

void IncomingPane::leaveGone()
{
    const QString told = leaveGoneRow(list_, QStringLiteral("구매내역"));
    resetPane();
    MsgBox(told, InformationIcon, incomingTitle, this);
}

void IncomingPane::fillPanel()
{
    if (list_.comesAnew() || inEdit() || !isLoaded())
        return;
    const ado::Recordset &incoming = *session_.rsProductIncoming;
    if (!incoming.hasCurrent()) {
        resetPane();
        return;
    }
    if (incoming.isGone()) {
        leaveGone();
        return;
    }
    txtIncCount_->setText(runtime::text(valOf(incoming[QStringLiteral("IN_Count")])));
    txtIncPricePerUnit_->setText(moneyOf(incoming[QStringLiteral("IN_UnitPrice")]));
    txtIncHalinTotal_->setText(moneyOf(incoming[QStringLiteral("IN_HalinTotal")]));
    txtIncPriceTotal_->setText(moneyOf(incoming[QStringLiteral("IN_Total")])); // after those that recalculate it
    txtIncMemo_->setText(runtime::text(incoming[QStringLiteral("IN_EtcMemo")]));
    const QVariant date = incoming[QStringLiteral("IN_Date")];
    if (!runtime::isNull(date))
        dtpIncDate_->setDate(date.toDate());
    showCompany(getCompanyName(DealerKey(QVariant(valOf(incoming[QStringLiteral("CM_PK")])))));
}

void IncomingPane::resetPane()
{
    const QString zero = runtime::money({});
    txtIncCount_->setText(QStringLiteral("1"));
    txtIncPricePerUnit_->setText(zero);
    txtIncHalinTotal_->setText(zero);
    txtIncPriceTotal_->setText(zero);
    showCompany(QString());
    txtIncCompanyName_->setProperty("Tag", QString());
    txtIncMemo_->clear();
    dtpIncDate_->setDate(QDate::currentDate());
}

void IncomingPane::addIncoming()
{
    if (!SaleSession::hasCurrent(session_.rsSaleProductListsManager)) {
        MsgBox(QStringLiteral("판매 물품 목록을 추가 하십시오"), InformationIcon, QStringLiteral("물품구매내역추가"),
               this);
        return;
    }
    intIncomingEditMode_ = 0;
    // Kept by key, since the product list may be read again during the edit.
    bought_ = ProductKey(session_.rsSaleProductListsManager->bookmark());
    resetPane();
    shell_.enterEditMode(incomingEditCode);
    txtIncCount_->setFocus();
}

void IncomingPane::editIncoming()
{
    intIncomingEditMode_ = -1;
    if (!SaleSession::hasCurrent(session_.rsProductIncoming))
        return;
    edited_ = IncomingKey(session_.rsProductIncoming->bookmark());
    shell_.enterEditMode(incomingEditCode);
    txtIncCount_->setFocus();
    intIncomingEditMode_ = 1;
}

void IncomingPane::deleteIncoming()
{
    intIncomingEditMode_ = -1;
    if (!SaleSession::hasCurrent(session_.rsProductIncoming))
        return;
    const IncomingKey purchase(session_.rsProductIncoming->bookmark());
    const QPointer<IncomingPane> alive(this);
    if (MsgBox(QStringLiteral("물품 구매내역을 삭제 하시겠습니까?"), controls::YesNo | InformationIcon,
               QStringLiteral("삭제"), this)
            != controls::Answer::Yes
        || !alive)
        return;
    try {
        operations_.remove(purchase);
    } catch (const runtime::RuntimeError &error) {
        if (!isConflict(error) || readListAnew(purchase))
            throw;
        runtime::trapped();
        leaveGone();
    }
}

IncomingEdit IncomingPane::typed() const
{
    return {txtIncCompanyName_->property("Tag").toString(),
            txtIncCount_->text(),
            txtIncPricePerUnit_->text(),
            txtIncHalinTotal_->text(),
            txtIncPriceTotal_->text(),
            txtIncMemo_->text(),
            dtpIncDate_->date()};
}

SaveOutcome IncomingPane::save()
{
    if (intIncomingEditMode_ == 0)
        return operations_.add(bought_, typed());
    if (intIncomingEditMode_ != 1)
        return SaveOutcome::Saved;
    try {
        return operations_.change(edited_, typed());
    } catch (const runtime::RuntimeError &error) {
        if (isConflict(error)) {
            // What the other desk stored shows in the list; the edit stays as typed, and may be saved over it.
            runtime::Attempt attempt;
            attempt([this] { session_.rsProductIncoming->requeryAt(edited_.bookmark()); });
        }
        throw;
    }
}

/// No trap: an error leaves the panel in edit and is told at the edge of the event.
void IncomingPane::saveIncoming()
{
    const SaveOutcome outcome = save();
    if (outcome == SaveOutcome::Saved) {
        endEdit();
        return;
    }
    const bool tooMuch = outcome == SaveOutcome::TooMuch;
    const QPointer<IncomingPane> alive(this);
    MsgBox(tooMuch ? QStringLiteral("구매수량이 9자리를 넘어 저장하지 않았습니다. 구매수량을 다시 입력하십시오.")
                   : QStringLiteral("거래처를 선택하십시오."),
           InformationIcon, incomingTitle, this);
    if (alive)
        (tooMuch ? static_cast<QLineEdit *>(txtIncCount_) : txtIncCompanyName_)->setFocus();
}

void IncomingPane::endEdit()
{
    intIncomingEditMode_ = -1;
    shell_.leaveEditMode(incomingEditCode);
    shell_.paintEntryColors();
    tdbProductIncoming_->setFocus();
    if (product_ != loaded_)
        loadProductIncoming(product_);
    else if (isLoaded())
        session_.rsProductIncoming->Requery();
}

bool IncomingPane::abandonEdit()
{
    if (!inEdit())
        return false;
    runtime::Attempt attempt; // a lost server is met by whatever begins next
    attempt([this] { endEdit(); });
    return true;
}

void IncomingPane::selectDealer()
{
    const controls::Modal<frmDealerSelect> dialog(window());
    insFrmCompanySelect_ = dialog.get();
    connect(dialog.get(), &frmDealerSelect::evtDealerSelected, this,
            &IncomingPane::insFrmCompanySelect_evtDealerSelected);
    const qint16 shown =
        dialog->SelectDealer(gcnnMasterDB, frmDealerSelect::Modal, runtime::Trim(txtIncCompanyName_->text()), window(),
                             *chkCmdIncSelectCompany_);
    if (dialog && shown == -1)
        dialog->tellFailure();
}

void IncomingPane::insFrmCompanySelect_evtDealerSelected(qint32 lngCMPK, const QString &strName)
{
    txtIncCompanyName_->setProperty("Tag", QString::number(lngCMPK));
    showCompany(strName);
}

void IncomingPane::showCompany(const QString &strName)
{
    controls::showText(txtIncCompanyName_, strName);
    txtIncCompanyName_->setToolTip(strName); // a long one is read there to its end
}
