#include "products/IncomingPane.h"

#include "data/clsSQL.h"
#include "input/FormRow.h"
#include "input/clsNumberRelated.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/ShowText.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "products/frmDealerSelect.h"
#include "session/modGlobalVars.h"

#include <QScopeGuard>

using controls::InformationIcon;
using controls::MsgBox;

namespace {

const QString incomingEditCode = QStringLiteral("11");

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
{
    makeList();
    makeStrip();
    makePanel();
    connectFields();
    connectButtons();
    layOutListAndPanel(this, sspProductIncoming_[0], elTranMnu_, sspProductIncoming_[1]);
    setTabChain({tdbProductIncoming_, chkcmdIncomingAED_[0], chkcmdIncomingAED_[1], chkcmdIncomingAED_[2], txtIncCount_,
                 txtIncPricePerUnit_, txtIncHalinTotal_, txtIncPriceTotal_, chkCmdIncSelectCompany_,
                 txtIncCompanyName_, dtpIncDate_, txtIncMemo_, chkcmdIncomingSave_[0], chkcmdIncomingSave_[1]});
    resetPane();
}

void IncomingPane::connectFields()
{
    for (const QLineEdit *box : {static_cast<QLineEdit *>(txtIncCount_), static_cast<QLineEdit *>(txtIncPricePerUnit_),
                                 static_cast<QLineEdit *>(txtIncHalinTotal_)})
        connect(box, &QLineEdit::textChanged, this, &IncomingPane::recalculateTotal);
    connect(txtIncPriceTotal_, &QLineEdit::textChanged, this, [this](const QString &typed) {
        showMoney(txtIncPriceTotal_, clsNumberRelated().GetPureNumber(typed.trimmed()));
    });
    connect(udIincomingCount_, &controls::Stepper::up, this, [this] { stepCount(1); });
    connect(udIincomingCount_, &controls::Stepper::down, this, [this] { stepCount(-1); });
}

// The discount is on the whole purchase, not per unit; nothing stops a negative total.
void IncomingPane::recalculateTotal()
{
    const double total =
        pureNumber(txtIncCount_) * pureNumber(txtIncPricePerUnit_) - pureNumber(txtIncHalinTotal_);
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

void IncomingPane::loadProductIncoming(qint32 lngPMPK)
{
    lngPMPK_ = lngPMPK;
    // A product list that is loaded anew beneath an edit must not take the edited purchase away; the list follows then.
    if (inEdit())
        return;
    ado::Recordset *incoming = session_.rsProductIncoming.get();
    if (!incoming)
        return;
    // Bound before it opens: the row change that comes with the rows fills the panel.
    if (tdbProductIncoming_->dataSource() != incoming)
        tdbProductIncoming_->setDataSource(incoming);
    if (incoming->isOpen())
        incoming->Close();
    incoming->Open(clsSQL().getProdIncomingSQL(lngPMPK), gcnnMasterDB, ado::CursorType::Keyset,
                   ado::LockType::Optimistic);
    lngLoadedPMPK_ = lngPMPK;
    tdbProductIncoming_->Rebind();
}

void IncomingPane::fillPanel()
{
    if (inEdit() || !session_.rsProductIncoming || !session_.rsProductIncoming->isOpen())
        return;
    const ado::Recordset &incoming = *session_.rsProductIncoming;
    if (!incoming.hasCurrent()) {
        resetPane();
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
    showCompany(getCompanyName(runtime::CLng(valOf(incoming[QStringLiteral("CM_PK")]))));
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
        MsgBox(QStringLiteral("판매 물품 목록을 추가 하십시오"), InformationIcon, QStringLiteral("물품구매내역추가"), this);
        return;
    }
    intIncomingEditMode_ = 0;
    resetPane();
    beginEdit();
}

void IncomingPane::editIncoming()
{
    intIncomingEditMode_ = -1;
    if (!SaleSession::hasCurrent(session_.rsProductIncoming))
        return;
    beginEdit();
    intIncomingEditMode_ = 1;
}

void IncomingPane::beginEdit()
{
    // The product on view now is the one that is bought, also when the product list comes anew beneath the edit.
    const ado::Recordset &products = *session_.rsSaleProductListsManager;
    lngEditedPMPK_ = runtime::CLng(runtime::Val(products[QStringLiteral("PM_PK")]));
    shell_.enterEditMode(incomingEditCode);
    txtIncCount_->setFocus();
}

void IncomingPane::deleteIncoming()
{
    intIncomingEditMode_ = -1;
    if (!SaleSession::hasCurrent(session_.rsProductIncoming))
        return;
    if (MsgBox(QStringLiteral("물품 구매내역을 삭제 하시겠습니까?"), controls::YesNo | InformationIcon,
               QStringLiteral("삭제"), this)
        == controls::Answer::Yes)
        tdbProductIncoming_->Delete();
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

/// No trap: an error leaves the panel in edit and is told at the edge of the event.
void IncomingPane::saveIncoming()
{
    SaveOutcome outcome = SaveOutcome::Saved;
    if (intIncomingEditMode_ == 0)
        outcome = operations_.add(lngEditedPMPK_, typed());
    else if (intIncomingEditMode_ == 1)
        outcome = operations_.change(lngEditedPMPK_, typed());
    if (outcome == SaveOutcome::Refused) {
        MsgBox(QStringLiteral("거래처를 선택하십시오."), InformationIcon, QStringLiteral("물품구매내역"), this);
        txtIncCompanyName_->setFocus();
        return;
    }
    endEdit();
}

void IncomingPane::endEdit()
{
    intIncomingEditMode_ = -1;
    shell_.leaveEditMode(incomingEditCode);
    shell_.paintEntryColors();
    tdbProductIncoming_->setFocus();
    if (lngPMPK_ != lngLoadedPMPK_)
        loadProductIncoming(lngPMPK_);
    else if (session_.rsProductIncoming && session_.rsProductIncoming->isOpen())
        session_.rsProductIncoming->Requery();
}

void IncomingPane::abandonEdit()
{
    if (!inEdit())
        return;
    runtime::Attempt attempt; // a lost server is met by whatever begins next
    attempt([this] { endEdit(); });
}

void IncomingPane::selectDealer()
{
    // The window may go while the dialog stands over it, and takes the dialog along.
    insFrmCompanySelect_ = new frmDealerSelect(window());
    const QPointer<frmDealerSelect> dialog = insFrmCompanySelect_;
    const auto release = qScopeGuard([dialog] { delete dialog.data(); });
    connect(dialog, &frmDealerSelect::evtDealerSelected, this, &IncomingPane::insFrmCompanySelect_evtDealerSelected);
    if (dialog->SelectDealer(gcnnMasterDB, frmDealerSelect::Modal, txtIncCompanyName_->text().trimmed(), window(),
                             *chkCmdIncSelectCompany_)
        == -1)
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
