#include "products/IncomingPane.h"

#include "data/clsSQL.h"
#include "forms/FormRow.h"
#include "forms/clsNumberRelated.h"
#include "platform/ado/Foresight.h"
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
    : RecordEditor(session, shell, session.rsProductIncoming,
                   {editCode::Purchase, QStringLiteral("구매내역"), incomingTitle}, parent)
    , operations_(session)
{
    makeControls();
    connectFields();
    connectControls();
    chkCmdIncSelectCompany_->onPush(this, [this] { selectDealer(); });
    layOutListAndPanel(this, listFrame_, panel_);
    setTabChain({grid_, commands_[Add], commands_[Edit], commands_[Delete], txtIncCount_, txtIncPricePerUnit_,
                 txtIncHalinTotal_, txtIncPriceTotal_, chkCmdIncSelectCompany_, txtIncCompanyName_, dtpIncDate_,
                 txtIncMemo_, saveButtons_[0], saveButtons_[1]});
    IncomingPane::resetPane();
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

void IncomingPane::loadProductIncoming(ProductKey product, const std::function<void(ado::Foresight &)> &tellNext)
{
    product_ = product;
    // The product list may be read again during an edit: the purchase in edit stays, and this list follows afterwards.
    if (inEdit())
        return;
    if (!rows_)
        return;
    list_.close();
    loaded_ = {};
    if (!product) {
        resetPane();
        return;
    }
    const QPointer<IncomingPane> alive(this); // a row that is shown may open a box
    tellNext_ = tellNext;
    const auto told = qScopeGuard([alive] {
        if (alive)
            alive->tellNext_ = {};
    });
    try {
        list_.load(clsSQL().getProdIncomingSQL(product.number()));
    } catch (const runtime::RuntimeError &) {
        resetPane();
        throw;
    }
    if (alive)
        loaded_ = product;
}

void IncomingPane::load()
{
    if (!product_)
        return;
    runtime::Attempt attempt;
    attempt([this] { loadProductIncoming(product_); });
}

void IncomingPane::showRow(const ado::Recordset &incoming)
{
    txtIncCount_->setText(runtime::text(valOf(incoming[QStringLiteral("IN_Count")])));
    txtIncPricePerUnit_->setText(moneyOf(incoming[QStringLiteral("IN_UnitPrice")]));
    txtIncHalinTotal_->setText(moneyOf(incoming[QStringLiteral("IN_HalinTotal")]));
    txtIncPriceTotal_->setText(moneyOf(incoming[QStringLiteral("IN_Total")])); // after those that recalculate it
    txtIncMemo_->setText(runtime::text(incoming[QStringLiteral("IN_EtcMemo")]));
    const QVariant date = incoming[QStringLiteral("IN_Date")];
    if (!runtime::isNull(date))
        dtpIncDate_->setDate(date.toDate());
    const DealerKey dealer(QVariant(valOf(incoming[QStringLiteral("CM_PK")])));
    ado::Foresight next(gcnnMasterDB);
    if (tellNext_)
        tellNext_(next.open(clsSQL().getCmpnyNameSQL(dealer.number()), ado::CursorType::Static));
    showCompany(getCompanyName(dealer));
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

void IncomingPane::addRow()
{
    if (!SaleSession::hasCurrent(session_.rsSaleProductListsManager)) {
        MsgBox(QStringLiteral("판매 물품 목록을 추가 하십시오"), InformationIcon, QStringLiteral("물품구매내역추가"),
               this);
        return;
    }
    mode_ = Adds;
    // Kept by key, since the product list may be read again during the edit.
    bought_ = ProductKey(session_.rsSaleProductListsManager->bookmark());
    resetPane();
    enterEdit(txtIncCount_);
}

void IncomingPane::editRow()
{
    mode_ = Neither;
    if (!hasRow())
        return;
    edited_ = IncomingKey(rows_->bookmark());
    enterEdit(txtIncCount_);
    mode_ = Changes;
}

void IncomingPane::deleteRow()
{
    mode_ = Neither;
    if (!hasRow())
        return;
    const IncomingKey purchase(rows_->bookmark());
    if (agrees(QStringLiteral("물품 구매내역을 삭제 하시겠습니까?"), QStringLiteral("삭제")))
        tellIfGone(purchase.bookmark(), [&] {
            operations_.remove(purchase);
            tellDone(QStringLiteral("삭제"));
        });
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
    if (mode_ == Adds)
        return operations_.add(bought_, typed());
    if (mode_ != Changes)
        return SaveOutcome::Saved;
    try {
        return operations_.change(edited_, typed());
    } catch (const runtime::RuntimeError &error) {
        if (isConflict(error)) {
            // What the other desk stored shows in the list; the edit stays as typed, and may be saved over it.
            runtime::Attempt attempt;
            attempt([this] { rows_->requeryAt(edited_.bookmark()); });
        }
        throw;
    }
}

/// No trap: an error leaves the panel in edit and is told at the edge of the event.
void IncomingPane::saveRow()
{
    const SaveOutcome outcome = save();
    if (outcome == SaveOutcome::Saved) {
        endEdit({});
        tellDone(QStringLiteral("저장"));
    } else if (outcome == SaveOutcome::TooMuch)
        refuse(QStringLiteral("구매수량이 9자리를 넘어 저장하지 않았습니다. 구매수량을 다시 입력하십시오."),
               InformationIcon, incomingTitle, txtIncCount_);
    else
        refuse(QStringLiteral("거래처를 선택하십시오."), InformationIcon, incomingTitle, txtIncCompanyName_);
}

/// Unlike the other lists' it lets errors go on to the caller.
void IncomingPane::endEdit(const ado::Bookmark &)
{
    mode_ = Neither;
    leaveEdit();
    grid_->setFocus();
    if (product_ != loaded_)
        loadProductIncoming(product_);
    else if (isLoaded())
        rows_->Requery();
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
