#include "money/LedgerPane.h"

#include "data/Codes.h"
#include "data/HeldOrder.h"
#include "data/OrderBalance.h"
#include "data/clsSQL.h"
#include "forms/FormRow.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/Operation.h"
#include "session/modGlobalVars.h"

#include <QHBoxLayout>
#include <QPointer>
#include <QVBoxLayout>

using controls::InformationIcon;
using controls::MsgBox;
using controls::named;
using controls::PushCheck;
using controls::RecordsetGrid;

namespace {

std::vector<controls::GridColumn> ledgerColumns()
{
    using Kind = controls::GridColumn::Kind;
    std::vector<controls::GridColumn::Item> operators;
    for (const ledger::Operator code : ledger::operators)
        operators.push_back({QString::number(code), ledger::operatorText(code)});
    std::vector<controls::GridColumn::Item> methods = {{QString(), QString::fromUtf16(ledger::methods.front().text)}};
    for (const ledger::Method &method : ledger::methods)
        methods.push_back({method.stored, QString::fromUtf16(method.text)});
    // clang-format off
    return {
        {.field = QStringLiteral("tpstrans_PK"), .caption = QStringLiteral("tpstrans_PK"), .visible = false},
        {.field = QStringLiteral("tpstrans_Customer_PK"), .caption = QStringLiteral("tpstrans_Customer_PK"), .visible = false},
        {.field = QStringLiteral("tpstrans_OrderM_PK"), .caption = QStringLiteral("tpstrans_OrderM_PK"), .visible = false},
        {.field = QStringLiteral("tpstrans_Date"), .caption = QStringLiteral("일자"), .kind = Kind::Date},
        {.field = QStringLiteral("tpstrans_Operator"), .caption = QStringLiteral("방법"), .kind = Kind::Values, .values = operators},
        {.field = QStringLiteral("tpstrans_Money"), .caption = QStringLiteral("금액"), .kind = Kind::Money},
        {.field = QStringLiteral("tpstrans_Method"), .caption = QStringLiteral("결재방법"), .kind = Kind::Values, .values = methods},
        {.field = QStringLiteral("tpstrans_Memo"), .caption = QStringLiteral("메모"), .width = 120, .fills = true},
    };
    // clang-format on
}

} // namespace

LedgerPane::LedgerPane(SaleSession &session, PaneShell &shell, QWidget *parent)
    : QObject(parent)
    , session_(session)
    , shell_(shell)
    , list_(session.rsCustTranManage)
    , c1elaList_(named(new QWidget(parent), QStringLiteral("c1elaList"), 3))
    , elTranMnu_(named(new QWidget(parent), QStringLiteral("elTranMnu"), 1))
    , c1elaTransInfo_(named(new LedgerInfoPanel(parent), QStringLiteral("c1elaTransInfo")))
{
    makeGrid();
    makeStrip();
    connectControls();
}

void LedgerPane::makeGrid()
{
    tdbCustTranManage_ = named(new RecordsetGrid(c1elaList_), QStringLiteral("tdbCustTranManage"));
    list_.setGrid(tdbCustTranManage_);
    tdbCustTranManage_->setAccessibleName(QStringLiteral("수납 내역"));
    tdbCustTranManage_->setColumns(ledgerColumns());
    tdbCustTranManage_->setEmptyText(QStringLiteral("수납 내역이 없습니다. 거래를 선택하고 수납을 누르십시오."));
    auto *layout = new QVBoxLayout(c1elaList_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tdbCustTranManage_);
}

void LedgerPane::makeStrip()
{
    const auto button = [this](const QString &caption, const QString &name) {
        auto *made = named(new PushCheck(caption, elTranMnu_), name);
        made->setAccessibleName(caption);
        return made;
    };
    chkCmdAutomateReceipt_ = button(QStringLiteral("수납"), QStringLiteral("chkCmdAutomateReceipt"));
    chkCmdRunMisuMoneyManger_ = button(QStringLiteral("미수금관리"), QStringLiteral("chkCmdRunMisuMoneyManger"));
    chkCmdMnuCustTrans_ = button(QStringLiteral("메뉴▼"), QStringLiteral("chkCmdMnuCustTrans"));
    chkcmdAddEditDelTran_ =
        makePushChecks(QStringLiteral("chkcmdAddEditDelTran"),
                       {QStringLiteral("추가"), QStringLiteral("수정"), QStringLiteral("삭제")}, elTranMnu_);
    PopMnuTran_ = named(new QMenu(elTranMnu_), QStringLiteral("PopMnuTran"));
    // Quirk (docs/architecture.md): its one entry does nothing; the strip above the orders prints the receipt.
    named(PopMnuTran_->addAction(QStringLiteral("영수증출력")), QStringLiteral("PopSubMnuRollReceipt"));

    // Taking money is what goes on; it is told from the rest at a glance.
    QFont strong = chkCmdAutomateReceipt_->font();
    strong.setBold(true);
    chkCmdAutomateReceipt_->setFont(strong);
    controls::setGround(chkCmdAutomateReceipt_, controls::Ground::Accent);

    auto *row = new QHBoxLayout(elTranMnu_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(chkCmdAutomateReceipt_);
    row->addSpacing(8);
    row->addWidget(chkCmdRunMisuMoneyManger_);
    row->addWidget(chkcmdAddEditDelTran_[0]);
    row->addWidget(chkcmdAddEditDelTran_[1]);
    row->addWidget(chkCmdMnuCustTrans_);
    row->addStretch(1);
    row->addWidget(chkcmdAddEditDelTran_[2]);
    letShrink({chkCmdAutomateReceipt_, chkCmdRunMisuMoneyManger_, chkcmdAddEditDelTran_[0], chkcmdAddEditDelTran_[1],
               chkCmdMnuCustTrans_, chkcmdAddEditDelTran_[2]});
    for (PushCheck *hidden : chkcmdAddEditDelTran_)
        keepPlaceWhenHidden(hidden);
}

void LedgerPane::connectControls()
{
    using controls::onEvent;
    onEvent(tdbCustTranManage_, &RecordsetGrid::rowChange, this, [this] { showRow(); });
    onEvent(tdbCustTranManage_, &RecordsetGrid::rowDoubleClicked, this, [this] { editRow(); });
    chkCmdAutomateReceipt_->onPush(this, [this] {
        if (takeOrder())
            emit receiptAsked();
    });
    chkCmdRunMisuMoneyManger_->onPush(this, [this] {
        if (takeOrder())
            emit outstandingMoneyAsked();
    });
    // Quirk (docs/architecture.md): this button does nothing; new money goes through the receipt dialogs.
    chkcmdAddEditDelTran_[0]->onPush(this, [] {});
    chkcmdAddEditDelTran_[1]->onPush(this, [this] { editRow(); });
    chkcmdAddEditDelTran_[2]->onPush(this, [this] { deleteRow(); });
    chkCmdMnuCustTrans_->onPush(this, [this] {
        PopMnuTran_->popup(chkCmdMnuCustTrans_->mapToGlobal(QPoint(0, chkCmdMnuCustTrans_->height())));
    });
    c1elaTransInfo_->chkCmdSaveMemo()->onPush(this, [this] { saveMemo(); });
    c1elaTransInfo_->chkCmdSaveTrans(0)->onPush(this, [this] { saveTrans(intTranEditMode_); });
    c1elaTransInfo_->chkCmdSaveTrans(1)->onPush(this, [this] { cancelEdit(); });
}

EditModeTable LedgerPane::editMode() const
{
    EditModeTable table;
    table.code = editCode::Ledger;
    table.containers = {c1elaTransInfo_};
    table.group = c1elaTransInfo_->colTrans();
    table.commands = {chkcmdAddEditDelTran_.begin(), chkcmdAddEditDelTran_.end()};
    table.saveButtons = c1elaTransInfo_->saveButtons();
    table.editColors = c1elaTransInfo_->editColors();
    table.entryColors = c1elaTransInfo_->entryColors();
    return table;
}

void LedgerPane::createCustTranManage()
{
    list_.create();
}

void LedgerPane::loadCustTranManage(qint32 lngCustPK, qint32 lngOrdMPK)
{
    const runtime::Operation operation("load ledger", {{"order", lngOrdMPK}, {"customer", lngCustPK}});
    try {
        list_.load(clsSQL().getCustTranSQL(lngCustPK, lngOrdMPK));
    } catch (const runtime::RuntimeError &) {
        runtime::trapped();
        showRow();
        MsgBox(QStringLiteral("수납 정보를 가져오지 못했습니다."), InformationIcon, QStringLiteral("데이터 가져오기"),
               c1elaList_);
    }
}

void LedgerPane::requeryCustTranManage()
{
    if (list_.isLoaded())
        list_.requery();
}

void LedgerPane::clear()
{
    list_.close();
    resetPane();
    c1elaTransInfo_->showWithoutRow(std::nullopt);
}

LedgerKey LedgerPane::currentRow() const
{
    const bool current = hasRow() && !session_.rsCustTranManage->isGone();
    return current ? LedgerKey(session_.rsCustTranManage->value(QStringLiteral("tpstrans_PK"))) : LedgerKey();
}

ShownOrder LedgerPane::currentOrder() const
{
    const bool current = hasOrder() && !session_.rsCustSaleMaster->isGone();
    return current ? shownOrder(*session_.rsCustSaleMaster) : ShownOrder();
}

void LedgerPane::tellDone(const QString &what) const
{
    emit session_.done(what + QStringLiteral(" · 받을 금액 ") + c1elaTransInfo_->shownBalance());
}

bool LedgerPane::takeOrder()
{
    const QPointer<LedgerPane> alive(this);
    emit session_.orderTaken();
    return alive && hasOrder();
}

void LedgerPane::pressAutomateReceipt()
{
    chkCmdAutomateReceipt_->setValue(1);
}

void LedgerPane::resetPane()
{
    c1elaTransInfo_->reset();
}

std::optional<runtime::Currency> LedgerPane::balance() const
{
    const ShownOrder order = currentOrder();
    if (!order)
        return std::nullopt;
    return calcOrderBalance(session_.rsCustSaleMaster.get(), gcnnMasterDB, order.customer.number(), order.number());
}

void LedgerPane::showRow()
{
    resetPane();
    if (!session_.rsCustTranManage)
        return;
    if (hasRow() && session_.rsCustTranManage->isGone())
        rowIsGone();
    else if (hasRow())
        c1elaTransInfo_->showRow(*session_.rsCustTranManage, balance());
    else
        c1elaTransInfo_->showWithoutRow(balance());
}

void LedgerPane::rowIsGone()
{
    session_.rsCustTranManage->requeryAt({});
    MsgBox(QStringLiteral("다른 데스크에서 먼저 삭제한 수납 내역입니다. 목록을 새로 가져왔습니다."), InformationIcon,
           QStringLiteral("수납 내역"), c1elaList_);
}

void LedgerPane::editRow()
{
    if (!hasOrder())
        return;
    if (hasRow())
        emit editOfRowAsked();
    else
        MsgBox(QStringLiteral("선택된 수납내역이 없습니다."), InformationIcon, QString(), elTranMnu_);
}

/// Quirk (docs/architecture.md): asks nothing first, and leaves the order's outstanding money and sums as they are.
void LedgerPane::deleteRow()
{
    intTranEditMode_ = -1;
    if (!hasRow()) {
        MsgBox(QStringLiteral("선택된 수납내역이 없습니다."), InformationIcon, QString(), elTranMnu_);
        return;
    }
    const ado::Bookmark row = session_.rsCustTranManage->bookmark();
    const runtime::Operation operation("delete ledger row", {{"row", row.toInt()}});
    runtime::Attempt attempt;
    attempt([this] { tdbCustTranManage_->Delete(); });
    if (!attempt.failed()) {
        tellDone(QStringLiteral("수납 내역 삭제"));
        return;
    }
    // Another desk may have changed the row, or deleted it: what stands now is shown, and can be deleted then.
    runtime::Attempt show;
    show([&] { list_.requeryAt(row); });
    MsgBox(QStringLiteral("수납내역을 삭제하지 못했습니다. "), InformationIcon, QStringLiteral("수납삭제"), elTranMnu_);
}

void LedgerPane::saveTrans(qint16 intTranEditMode)
{
    const QPointer<LedgerPane> alive(this);
    const ShownOrder order = currentOrder();
    const runtime::Operation operation("save ledger row", {{"order", order.number()}});
    runtime::Attempt outstanding;
    if (intTranEditMode == 0 || intTranEditMode == 1) {
        runtime::Attempt reading;
        LedgerEntry entry;
        reading([&] { entry = c1elaTransInfo_->entry(); });
        const bool saved = !reading.failed()
                           && (intTranEditMode == 0 ? ledger::addFormEntry(session_, order, entry)
                                                    : ledger::changeFormEntry(session_, order, currentRow(), entry));
        if (!saved)
            MsgBox(QStringLiteral("저장을 하지 못했습니다. 서버와의 연결을 확인하십시오."), InformationIcon,
                   QStringLiteral("저장"), c1elaTransInfo_);
        if (saved && intTranEditMode == 0)
            outstanding([&] { ledger::followAddedFormEntry(session_, order, entry); });
    }
    if (!alive)
        return;
    endEdit();
    if (outstanding.failed()) // the row is saved by then, so this is no failure of the save
        MsgBox(outstanding.description(), controls::WarningIcon, QStringLiteral("미수금 재계산"), c1elaTransInfo_);
}

void LedgerPane::cancelEdit()
{
    runtime::Attempt attempt;
    attempt([this] { requeryCustTranManage(); });
    endEdit();
}

/// Every step runs, whichever fails: an edit left open would add its row again.
void LedgerPane::endEdit()
{
    runtime::Attempt attempt;
    attempt([this] { tdbCustTranManage_->Rebind(); });
    attempt([this] {
        if (hasOrder())
            session_.rsCustSaleMaster->Requery();
    });
    attempt([this] {
        if (const std::optional<runtime::Currency> owed = balance())
            c1elaTransInfo_->showBalance(*owed);
    });
    attempt([this] {
        const bool row = bool(currentRow());
        c1elaTransInfo_->showMemo(row ? session_.rsCustTranManage->value(QStringLiteral("tpstrans_Memo")) : QVariant());
    });
    c1elaTransInfo_->clearMoney();
    shell_.leaveEditMode(editCode::Ledger);
    shell_.paintEntryColors();
    tdbCustTranManage_->setFocus();
    intTranEditMode_ = -1;
}

void LedgerPane::saveMemo()
{
    if (!hasRow())
        return;
    ado::Recordset &ledger = *session_.rsCustTranManage;
    const ado::Bookmark row = ledger.bookmark();
    const runtime::Operation operation("save ledger memo", {{"row", row.toInt()}});
    const QString typed = c1elaTransInfo_->memo();
    try {
        ledger.setValue(QStringLiteral("tpstrans_Memo"), typed);
        const ShownOrder order{OrderKey(ledger[QStringLiteral("tpstrans_OrderM_PK")]),
                               CustomerKey(ledger[QStringLiteral("tpstrans_Customer_PK")]),
                               {}};
        onHeldOrder(*gcnnMasterDB, order, [&] {
            holdLedgerRow(*gcnnMasterDB, LedgerKey(row), order);
            ledger.Update();
        });
    } catch (const runtime::RuntimeError &error) {
        // What was not saved must not ride along with a later save of the row.
        runtime::Attempt undo;
        undo([&] { ledger.CancelUpdate(); });
        if (error.number() == runtime::ErrorNumber::Conflict)
            undo([&] {
                if (list_.requeryAt(row))
                    c1elaTransInfo_->showMemo(typed); // it can be saved now
            });
        throw;
    }
    tdbCustTranManage_->Rebind();
    emit session_.done(QStringLiteral("메모 저장"));
}
