#include "money/ReceiptFlow.h"

#include "data/ShownReadings.h"
#include "money/DialogForm.h"
#include "money/LedgerPane.h"
#include "money/LedgerTexts.h"
#include "money/askWhetherToSave.h"
#include "money/clsOperationMoney.h"
#include "money/frmSimpleReceiptAdd.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Modal.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Log.h"
#include "session/modGlobalVars.h"

#include <QPointer>
#include <QScopeGuard>

#include <optional>
#include <vector>

using controls::InformationIcon;
using controls::MsgBox;
using runtime::Currency;

namespace {

struct LedgerSums
{
    qint32 cut = 0;
    qint32 discount = 0;
    qint32 payment = 0;
    qint32 refund = 0;
};

/// Nothing when one of them cannot be read: taken as 0, the customer would be asked to pay it again.
std::optional<LedgerSums> ledgerSumsOf(OrderKey order)
{
    const qint32 lngOrdMPK = order.number();
    LedgerSums sums;
    clsOperationMoney operations;
    operations.OPM_SetConnection(gcnnMasterDB);
    ado::Foresight next(gcnnMasterDB);
    tellSumsOfTransaction(next, lngOrdMPK);
    const bool read = operations.OPM_GetCutByTransaction(lngOrdMPK, sums.cut)
                      && operations.OPM_GetDiscountByTransaction(lngOrdMPK, sums.discount)
                      && operations.OPM_GetPayByTransaction(lngOrdMPK, sums.payment)
                      && operations.OPM_GetRefundByTransaction(gcnnMasterDB, lngOrdMPK, sums.refund);
    operations.OPM_DestroyConnection();
    return read ? std::optional(sums) : std::nullopt;
}

/// What the ledger's list and its balance read when a row was written.
void tellShown(ado::Foresight &next, const ShownOrder &order)
{
    shownReadings::tellLedger(next, order.customer.number(), order.number());
    shownReadings::tellBalance(next, order.customer.number(), order.number());
}

qint16 existsOperation(OrderKey order)
{
    clsOperationMoney operations;
    operations.OPM_SetConnection(gcnnMasterDB);
    const qint16 exists = operations.OPM_ExistOperationByReceipt(order.number());
    operations.OPM_DestroyConnection();
    return exists;
}

} // namespace

ReceiptFlow::ReceiptFlow(SaleSession &session, LedgerPane &ledgerPane, QWidget *owner)
    : QObject(owner)
    , session_(session)
    , ledgerPane_(ledgerPane)
    , owner_(owner)
{
    controls::onEvent(&ledgerPane, &LedgerPane::receiptAsked, this, [this] { takeReceipt(); });
    controls::onEvent(&ledgerPane, &LedgerPane::editOfRowAsked, this, [this] { editCurrentRow(); });
}

ReceiptFlow::Order ReceiptFlow::currentOrder()
{
    Order order;
    session_.readAnewOnConflict([&] {
        const ado::Recordset &orders = *session_.rsCustSaleMaster;
        const QVariant outstanding = orders[QStringLiteral("OrdM_Misugum")];
        order = {shownOrder(orders), runtime::CLng(runtime::Val(orders[QStringLiteral("OrdM_Total")])),
                 runtime::isNull(outstanding) ? Currency() : runtime::CCur(outstanding)};
    });
    return order;
}

std::optional<LedgerSight> ReceiptFlow::look(const Order &order) const
{
    std::optional<LedgerSight> seen;
    runtime::Attempt attempt;
    attempt([&] {
        if (gcnnMasterDB)
            seen = LedgerSight::of(*gcnnMasterDB, order.shown);
    });
    if (!seen)
        tellConnectionFailure(QStringLiteral("수납 작업"));
    return seen;
}

void ReceiptFlow::takeReceipt()
{
    if (!SaleSession::hasCurrent(session_.rsCustSaleMaster))
        return;
    const Order order = currentOrder();
    ado::Foresight next(gcnnMasterDB);
    LedgerSight::tell(next, order.shown);
    tellExistOperationByReceipt(next, order.shown.number());
    if (SaleSession::hasCurrent(session_.rsCustTranManage)) // as the list shows it: likely there is an operation
        tellSumsOfTransaction(next, order.shown.number());
    dialogForm::tellDiscountSwitch(next);
    // Before all that the dialogs show, which may be of a later moment.
    const std::optional<LedgerSight> seen = look(order);
    if (!seen)
        return;
    switch (existsOperation(order.shown.key)) {
    case -1:
        tellConnectionFailure(QStringLiteral("수납 작업"));
        break;
    case 0:
        openSimpleReceipt(order, *seen, {});
        break;
    default:
        takeFurtherOperation(order, *seen);
        break;
    }
}

void ReceiptFlow::editCurrentRow()
{
    if (ledgerPane_.currentRow() && SaleSession::hasCurrent(session_.rsCustSaleMaster))
        openSimpleReceipt(currentOrder(), {}, ledger::shownRow(*session_.rsCustTranManage));
}

void ReceiptFlow::openSimpleReceipt(const Order &order, const LedgerSight &asSeen, const ledger::ShownRow &edited)
{
    const ShownOrder shown = order.shown;
    const controls::Modal<frmSimpleReceipt> insfrmSimpleReceipt(owner_);
    // The keys that the events bring are those that the dialog was opened with.
    connect(insfrmSimpleReceipt.get(), &frmSimpleReceipt::AppendDBGeneral, this,
            [this, shown, seen = asSeen](qint32, const QDate &date, float discount, float cut, float cash, float card,
                                         float outstanding, qint32, const QString &) mutable {
                insfrmSimpleReceipt_AppendDBGeneral(seen, {shown, date, discount, cut, cash, card}, outstanding);
            });
    connect(
        insfrmSimpleReceipt.get(), &frmSimpleReceipt::ExecuteDB, this,
        [this, shown, edited](qint32, const QDate &date, qint16 intOperator, qint32 lngMoney, qint32, const QString &) {
            insfrmSimpleReceipt_ExecuteDB(edited, {shown, date, intOperator, lngMoney, QString()});
        });
    insfrmSimpleReceipt->tellOutstanding(order.outstanding);
    if (edited)
        insfrmSimpleReceipt->tellEditedRow(rowOnView());
    insfrmSimpleReceipt->Operation(1, shown.customer.number(), session_.customer.name, session_.customer.chartNumber,
                                   shown.date, order.lngTotal, shown.number(), edited ? -1 : 0, QDate::currentDate(), 0,
                                   QStringLiteral("0"), owner_);
}

frmSimpleReceipt::EditedRow ReceiptFlow::rowOnView() const
{
    const ado::Recordset &row = *session_.rsCustTranManage;
    const QVariant money = row[QStringLiteral("tpstrans_Money")];
    const QVariant method = row[QStringLiteral("tpstrans_Method")];
    return {row[QStringLiteral("tpstrans_Date")].toDate(), ledger::kindText(row[QStringLiteral("tpstrans_Operator")]),
            runtime::isNull(money) ? Currency() : runtime::CCur(money),
            runtime::isNull(method) ? ledger::methodText(QString(ledger::CashMethod)) : ledger::methodText(method)};
}

/// Errors are shown here and the dialog closes all the same: saving again would write the rows twice.
void ReceiptFlow::insfrmSimpleReceipt_AppendDBGeneral(LedgerSight &seen, const ledger::FirstPayment &payment,
                                                      float outstanding)
{
    controls::runEvent([&] {
        bool written = false;
        ado::Foresight shown(gcnnMasterDB, ado::Foresight::Behind::Commit);
        tellShown(shown, payment.order);
        const auto show = qScopeGuard([this, &written, alive = QPointer<ReceiptFlow>(this)] {
            if (!alive) // a row that is shown may have opened a box
                return;
            // After a failure too, so that the rows that were written are seen.
            runtime::Attempt attempt;
            attempt([this] { showWritten(); });
            attempt([this] { emit session_.orderTotalsChanged(); });
            if (written && alive)
                ledgerPane_.tellDone(QStringLiteral("수납"));
        });
        std::vector<std::function<void(LedgerSight *)>> steps;
        for (const ledger::Row &row : ledger::rowsOf(payment))
            steps.push_back([row](LedgerSight *asSeen) { ledger::insertRow(*gcnnMasterDB, row, asSeen); });
        if (outstanding != 0) {
            steps.push_back([&, won = Currency::fromWon(runtime::CLng(double(outstanding)))](LedgerSight *asSeen) {
                ledger::addOutstanding(*gcnnMasterDB, *session_.rsCustSaleMaster, payment.order, won, asSeen);
            });
        }
        session_.readAnewOnConflict([&] {
            // What comes to the ledger after the first step comes second.
            if (steps.empty() || !writeOnSeenLedger(seen, [&] { steps.front()(&seen); }))
                return;
            for (std::size_t step = 1; step < steps.size(); ++step)
                steps[step](nullptr);
            if (outstanding != 0)
                emit orderGridMustRefresh();
            written = true;
        });
    });
}

bool ReceiptFlow::writeOnSeenLedger(LedgerSight &seen, const std::function<void()> &firstStep)
{
    const QPointer<ReceiptFlow> alive(this);
    bool asked = false;
    const bool written = seen.write(firstStep, [&](const QString &changes) {
        asked = true;
        return askWhetherToSave(changes, QStringLiteral("수납"), owner_) && alive;
    });
    if (asked && alive)
        emit session_.changedElsewhere();
    return written;
}

void ReceiptFlow::showWritten()
{
    ledgerPane_.requeryCustTranManage();
    emit orderGridMustRebind();
}

void ReceiptFlow::insfrmSimpleReceipt_ExecuteDB(const ledger::ShownRow &edited, const ledger::Row &row)
{
    try {
        ledger::updateRow(*gcnnMasterDB, edited, row);
        emit orderGridMustRefresh();
        showWritten();
        ledgerPane_.tellDone(QStringLiteral("수납 내역 수정"));
    } catch (const runtime::RuntimeError &error) {
        runtime::trapped();
        runtime::Attempt show; // what the server saved before it was lost
        show([this] { showWritten(); });
        const bool conflict = error.number() == runtime::ErrorNumber::Conflict;
        if (conflict)
            show([this] { emit session_.changedElsewhere(); });
        if (conflict)
            MsgBox(error.description(), InformationIcon, QStringLiteral("수납 내역 수정"), owner_);
        else
            tellConnectionFailure(QStringLiteral("데이터베이스 접속 오류"));
    }
}

void ReceiptFlow::takeFurtherOperation(const Order &order, LedgerSight seen)
{
    const std::optional<LedgerSums> sums = ledgerSumsOf(order.shown.key);
    if (!sums) {
        tellConnectionFailure(QStringLiteral("수납 작업"));
        return;
    }
    bool bRecalc = !order.outstanding.isZero();
    ledger::Row row{order.shown, order.shown.date, 0, 0, QString()};
    const QPointer<ReceiptFlow> alive(this);
    const controls::Modal<frmSimpleReceiptAdd> dialog(owner_);
    const bool saved =
        dialog->OperationAdd(owner_, order.shown.date, order.lngTotal, sums->discount, sums->cut, sums->payment,
                             sums->refund, order.shown.number(), session_.customer.chartNumber, session_.customer.name,
                             row.date, row.intOperator, row.lngMoney, row.strMethod, bRecalc);
    if (!alive)
        return;
    bool written = false;
    ado::Foresight shown(gcnnMasterDB, ado::Foresight::Behind::Commit);
    const auto show = qScopeGuard([&, alive] {
        if (!alive) // a row that is shown may have opened a box
            return;
        // After a failure too, or the user would write the row again; after a cancellation too, since another desk may
        // have written meanwhile.
        runtime::Attempt attempt;
        attempt([this] { ledgerPane_.requeryCustTranManage(); });
        attempt([this] { emit session_.orderTotalsChanged(); });
        if (written && alive)
            ledgerPane_.tellDone(ledger::operatorText(ledger::Operator(row.intOperator)));
    });
    session_.readAnewOnConflict([&] {
        if (saved)
            written = writeFurtherOperation(seen, row, bRecalc, shown);
        else if (session_.rsCustSaleMaster)
            ledger::standOnOrder(*session_.rsCustSaleMaster, order.shown);
    });
}

bool ReceiptFlow::writeFurtherOperation(LedgerSight &seen, const ledger::Row &row, bool bRecalc, ado::Foresight &shown)
{
    if (!bRecalc) { // else the outstanding money comes first
        shown.row(*session_.rsCustSaleMaster, session_.rsCustSaleMaster->currentRow());
        tellShown(shown, row.order);
    }
    if (!writeOnSeenLedger(seen, [&] { ledger::insertRow(*gcnnMasterDB, row, &seen); }))
        return false;
    // Quirk (docs/architecture.md): whatever the operation, so a refund lessens the outstanding money too.
    if (bRecalc)
        ledger::addOutstanding(*gcnnMasterDB, *session_.rsCustSaleMaster, row.order, -Currency::fromWon(row.lngMoney));
    else
        ledger::standOnOrder(*session_.rsCustSaleMaster, row.order);
    return true;
}

void ReceiptFlow::tellConnectionFailure(const QString &title) const
{
    const QString text = QStringLiteral("데이터베이스 접속에 문제가 생겼습니다.") + QLatin1Char('\r')
                         + QStringLiteral("프로그램을 종료하고 네트워크를 확인한 후") + QLatin1Char('\r')
                         + QStringLiteral("다시 시도해 보십시오.");
    MsgBox(text, InformationIcon, title, owner_);
}
