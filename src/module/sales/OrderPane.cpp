#include "sales/OrderPane.h"

#include "data/Codes.h"
#include "data/HeldOrder.h"
#include "data/ShownReadings.h"
#include "data/clsSQL.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/Operation.h"
#include "platform/runtime/RuntimeError.h"
#include "session/modGlobalVars.h"

#include <QPointer>
#include <QVBoxLayout>

using controls::InformationIcon;
using controls::MsgBox;
using controls::named;
using controls::RecordsetGrid;

namespace {

/// Index of OrdM_Misugum, the one cell that can be typed into.
constexpr int outstandingColumn = 7;

std::vector<controls::GridColumn> orderColumns()
{
    using Kind = controls::GridColumn::Kind;
    // clang-format off
    return {
        {.field = QStringLiteral("OrdM_PK"), .caption = QStringLiteral("OrdM_PK"), .visible = false},
        {.field = QStringLiteral("Cust_PK"), .caption = QStringLiteral("Cust_PK"), .visible = false},
        {.field = QStringLiteral("OrdM_Date"), .caption = QStringLiteral("거래일자"), .kind = Kind::Date},
        {.field = QStringLiteral("OrdM_TaxTotal"), .caption = QStringLiteral("과세상품 총합"), .kind = Kind::Money},
        {.field = QStringLiteral("OrdM_TaxFreeTotal"), .caption = QStringLiteral("비과세상품 총합"), .kind = Kind::Money},
        {.field = QStringLiteral("OrdM_HalinTotal"), .caption = QStringLiteral("할인금액"), .kind = Kind::Money},
        {.field = QStringLiteral("OrdM_Total"), .caption = QStringLiteral("판매총액"), .kind = Kind::Money},
        {.field = QStringLiteral("OrdM_Misugum"), .caption = QStringLiteral("미수금"), .kind = Kind::Money, .editable = true},
        {.field = QStringLiteral("OrdM_Gubun"), .caption = QStringLiteral("택배"), .kind = Kind::Check, .checkedText = QString::number(sale::Courier)},
        {.field = QStringLiteral("OrdM_Address"), .caption = QStringLiteral("고객주소"), .width = 180, .fills = true},
        {.field = QStringLiteral("OrdM_Tel"), .caption = QStringLiteral("고객 전화번호"), .width = 104},
        {.field = QStringLiteral("OrdM_Cel"), .caption = QStringLiteral("고객 핸드폰"), .width = 104},
        {.field = QStringLiteral("OrdM_TakbaeMemo"), .caption = QStringLiteral("택배메모"), .width = 140},
        {.field = QStringLiteral("OrdM_ETCMemo"), .caption = QStringLiteral("메모"), .width = 140},
    };
    // clang-format on
}

} // namespace

OrderPane::OrderPane(SaleSession &session, PaneShell &shell, QWidget *parent)
    : QObject(parent)
    , session_(session)
    , shell_(shell)
    , operations_(session)
    , save_(session)
    , list_(session.rsCustSaleMaster)
    , c1elaList_(named(new QWidget(parent), QStringLiteral("c1elaList"), 1))
    , elTranMnu_(named(new OrderStrip(parent), QStringLiteral("elTranMnu"), 0))
    , c1elaCustSaleInfo_(named(new OrderInfoPanel(parent), QStringLiteral("c1elaCustSaleInfo")))
    , tdbCustSaleMaster_(named(new RecordsetGrid(c1elaList_), QStringLiteral("tdbCustSaleMaster")))
{
    list_.setGrid(tdbCustSaleMaster_);
    auto *layout = new QVBoxLayout(c1elaList_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tdbCustSaleMaster_);
    tdbCustSaleMaster_->setAccessibleName(QStringLiteral("거래 목록"));
    tdbCustSaleMaster_->setColumns(orderColumns());
    tdbCustSaleMaster_->setEmptyText(QStringLiteral("아직 거래가 없습니다. 왼쪽에서 물품을 고르고 추가하십시오."));
    tdbCustSaleMaster_->setBeforeColumnUpdate([](int column, QString &typed) {
        if (column == outstandingColumn && typed.isEmpty())
            typed = QStringLiteral("0");
    });
    tdbCustSaleMaster_->setStepForesight([this](int row) {
        ado::Foresight next(gcnnMasterDB);
        shownReadings::tellOrderAt(next, *session_.rsCustSaleMaster, row, session_.customer.lngCustPK);
        return next;
    });
    controls::onEvent(tdbCustSaleMaster_, &RecordsetGrid::rowChange, this, [this] { rowChanged(); });
    controls::onEvent(tdbCustSaleMaster_, &RecordsetGrid::afterColumnUpdate, this, [this](int) { saveOutstanding(); });
    connectButtons();
}

void OrderPane::connectButtons()
{
    elTranMnu_->chkCmdOrderMasterED(0)->onPush(this, [this] { editOrder(); });
    elTranMnu_->chkCmdOrderMasterED(1)->onPush(this, [this] { deleteOrder(); });
    c1elaCustSaleInfo_->chkcmdCSSaveInfo(0)->onPush(this, [this] { saveOrder(); });
    c1elaCustSaleInfo_->chkcmdCSSaveInfo(1)->onPush(this, [this] { endEdit(); });
    elTranMnu_->chkCmdPrintReceipt(0)->onPush(this, [this] {
        if (takeOrder() && hasOrderToPrint())
            emit orderReceiptAsked();
    });
    elTranMnu_->chkCmdPrintReceipt(1)->onPush(this, [this] { askPeriodReceipt(); });
    elTranMnu_->chkCmdPrintReceiptRollPrinter()->onPush(this, [this] {
        if (takeOrder() && hasOrderToPrint())
            emit rollReceiptAsked();
    });
}

EditModeTable OrderPane::editMode() const
{
    EditModeTable table;
    table.code = editCode::Order;
    table.containers = {c1elaCustSaleInfo_};
    table.group = c1elaCustSaleInfo_->colOrderMaster();
    table.commands = {elTranMnu_->chkCmdOrderMasterED(0), elTranMnu_->chkCmdOrderMasterED(1)};
    table.saveButtons = c1elaCustSaleInfo_->saveButtons();
    table.editColors = c1elaCustSaleInfo_->editColors();
    table.entryColors = c1elaCustSaleInfo_->entryColors();
    return table;
}

void OrderPane::createCustSaleMaster()
{
    list_.create();
}

void OrderPane::loadCustSaleMaster()
{
    const runtime::Operation operation("load orders", {{"customer", session_.customer.lngCustPK}});
    const QPointer<OrderPane> alive(this); // a row that is shown may open a box
    ado::Foresight next(gcnnMasterDB);
    if (session_.rsCustSaleMaster
        && session_.rsCustSaleMaster->source() == clsSQL().getOrderMasterSQL(session_.customer.lngCustPK))
        shownReadings::tellOrders(next, *session_.rsCustSaleMaster, session_.customer.lngCustPK);
    try {
        list_.load(clsSQL().getOrderMasterSQL(session_.customer.lngCustPK));
        if (!alive)
            return;
        session_.linesMayBeStale = false;
    } catch (const runtime::RuntimeError &) {
        runtime::trapped();
        resetPane();
        emit ordersChanged();
        emit ordersNotRead();
        MsgBox(QStringLiteral("고객 판매 마스터 정보를 가져오지 못했습니다."), InformationIcon,
               QStringLiteral("데이터 가져오기"), c1elaList_);
    }
}

void OrderPane::readAnew()
{
    if (list_.isLoaded())
        list_.requeryHere();
}

void OrderPane::leaveUnchosen()
{
    tdbCustSaleMaster_->leaveUnchosen();
}

void OrderPane::chooseOrder()
{
    tdbCustSaleMaster_->chooseRow();
}

void OrderPane::rowChanged()
{
    emit ordersChanged();
    // While the form is in edit a reload must not wipe what is being typed.
    const bool fill = !inEdit();
    if (!SaleSession::hasCurrent(session_.rsCustSaleMaster)) {
        if (fill)
            resetPane();
        emit noOrderSelected();
        return;
    }
    if (session_.rsCustSaleMaster->isGone()) {
        orderIsGone();
        return;
    }
    if (fill)
        c1elaCustSaleInfo_->showOrder(*session_.rsCustSaleMaster);
    emit orderRowChanged(runtime::CLng(session_.rsCustSaleMaster->value(QStringLiteral("OrdM_PK"))));
}

/// Another desk deleted the chosen order: no order is current then, and nothing of it may stay on the screen.
void OrderPane::orderIsGone()
{
    session_.rsCustSaleMaster->requeryAt({});
    MsgBox(
        QStringLiteral("다른 데스크에서 먼저 삭제한 거래입니다. 목록을 새로 가져왔습니다.\n거래를 다시 선택하십시오."),
        InformationIcon, QStringLiteral("거래 선택"), c1elaList_);
}

void OrderPane::showOrderTotals()
{
    if (!inEdit() && SaleSession::hasCurrent(session_.rsCustSaleMaster))
        c1elaCustSaleInfo_->showTotals(*session_.rsCustSaleMaster);
    emit ordersChanged();
}

void OrderPane::resetPane()
{
    c1elaCustSaleInfo_->clear();
}

bool OrderPane::takeOrder()
{
    const QPointer<OrderPane> alive(this);
    emit session_.orderTaken();
    return !alive.isNull();
}

void OrderPane::editOrder()
{
    if (!takeOrder() || !save_.begin(c1elaCustSaleInfo_->edit()))
        return;
    shell_.enterEditMode(editCode::Order);
    c1elaCustSaleInfo_->openDiscount(true);
    c1elaCustSaleInfo_->enterFirstField();
}

void OrderPane::saveOrder()
{
    const QPointer<OrderPane> alive(this);
    ado::Foresight shown(gcnnMasterDB, ado::Foresight::Behind::Commit);
    if (session_.rsCustSaleMaster)
        shownReadings::tellOrders(shown, *session_.rsCustSaleMaster, session_.customer.lngCustPK);
    const Outcome outcome = inEdit() ? save_.save(c1elaCustSaleInfo_->edit()) : Outcome::Stopped;
    const QString remark = outcome == Outcome::Conflict ? QStringLiteral(
                               "다른 데스크에서 먼저 수정하거나 삭제했습니다. 입력한 내용은 화면에 그대로 있습니다.\n"
                               "확인한 뒤 다시 저장하거나 취소하십시오.")
                                                        : save_.refusal();
    if (hasFailed(outcome))
        MsgBox(QStringLiteral("저장을 하지 못했습니다. 서버와의 연결을 확인하십시오."), InformationIcon,
               QStringLiteral("저장"), c1elaCustSaleInfo_, remark);
    // After another desk's change what was typed stays, and the edit open: the user saves over it, or cancels.
    if (alive && outcome != Outcome::Conflict)
        endEdit();
    if (alive && outcome == Outcome::Done)
        emit session_.done(QStringLiteral("거래 저장"));
}

void OrderPane::endEdit()
{
    // Before the requery, which fills the form from the row.
    leaveEdit();
    const QPointer<OrderPane> alive(this); // a row that is shown may open a box
    runtime::Attempt attempt;              // what went wrong with the save was told by now
    attempt([this] {
        if (list_.isLoaded())
            session_.rsCustSaleMaster->Requery();
    });
    if (alive)
        tdbCustSaleMaster_->setFocus();
}

void OrderPane::leaveEdit()
{
    c1elaCustSaleInfo_->openDiscount(false);
    shell_.leaveEditMode(editCode::Order);
    shell_.paintEntryColors();
}

bool OrderPane::abandonEdit()
{
    const bool open = inEdit();
    if (open)
        leaveEdit();
    return open;
}

void OrderPane::deleteOrder()
{
    if (!takeOrder())
        return;
    const ShownOrder order = operations_.currentOrder();
    if (!order)
        return;
    const QPointer<OrderPane> alive(this);
    const QString title = QStringLiteral("판매 마스터 삭제");
    const QString question = QStringLiteral("선택한 고객 판매 마스터을 삭제 하시겠습니까?") + QLatin1Char('\n')
                             + QStringLiteral("(고객 판매 디테일도 모두 삭제됩니다.)");
    if (MsgBox(question, controls::YesNo | controls::QuestionIcon, title, c1elaList_) != controls::Answer::Yes
        || !alive)
        return;
    const Outcome outcome = operations_.deleteOrder(order);
    if (alive && outcome == Outcome::Done)
        emit session_.done(QStringLiteral("거래 삭제"));
    if (alive && outcome == Outcome::Conflict)
        emit session_.changedElsewhere();
    if (alive && hasFailed(outcome))
        MsgBox(QStringLiteral("고객 판매 마스터를 삭제하지 못했습니다."), InformationIcon, title, c1elaList_);
}

/// Saves the cell at once and shows it in the form too, whose next save would otherwise write the old value. The grid
/// takes back what cannot be saved.
void OrderPane::saveOutstanding()
{
    if (!SaleSession::hasCurrent(session_.rsCustSaleMaster))
        return;
    session_.readAnewOnConflict([this] {
        ado::Recordset &orders = *session_.rsCustSaleMaster;
        ShownOrder order = shownOrder(orders);
        order.date = {}; // only the same field collides
        onHeldOrder(*gcnnMasterDB, order, [&] { orders.Update(); });
    });
    showOrderTotals();
}

bool OrderPane::hasOrderToPrint()
{
    if (SaleSession::hasCurrent(session_.rsCustSaleMaster))
        return true;
    MsgBox(QStringLiteral("거래 내역이 없어 출력할 수 없습니다."), InformationIcon, QStringLiteral("영수증 출력"),
           elTranMnu_);
    return false;
}

void OrderPane::askPeriodReceipt()
{
    const QDate dtStart = elTranMnu_->uxStartDateDTP()->date();
    const QDate dtEnd = elTranMnu_->uxEndDateDTP()->date();
    if (dtStart > dtEnd) {
        MsgBox(QStringLiteral("시작일이 종료일 보다 큽니다. 날짜를 변경하십시오."), InformationIcon, QString(),
               elTranMnu_);
        return;
    }
    if (hasOrderToPrint())
        emit periodReceiptAsked(dtStart, dtEnd);
}
