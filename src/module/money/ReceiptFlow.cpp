#include "money/ReceiptFlow.h"

#include "money/LedgerPane.h"
#include "money/clsOperationMoney.h"
#include "money/frmSimpleReceipt.h"
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
    const bool read = operations.OPM_GetCutByTransaction(lngOrdMPK, sums.cut)
                      && operations.OPM_GetDiscountByTransaction(lngOrdMPK, sums.discount)
                      && operations.OPM_GetPayByTransaction(lngOrdMPK, sums.payment)
                      && operations.OPM_GetRefundByTransaction(gcnnMasterDB, lngOrdMPK, sums.refund);
    operations.OPM_DestroyConnection();
    return read ? std::optional(sums) : std::nullopt;
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
        order = {OrderKey(orders[QStringLiteral("OrdM_PK")]), CustomerKey(orders[QStringLiteral("Cust_PK")]),
                 orders[QStringLiteral("OrdM_Date")].toDate(),
                 runtime::CLng(runtime::Val(orders[QStringLiteral("OrdM_Total")])),
                 runtime::Val(orders[QStringLiteral("OrdM_Misugum")]) != 0};
    });
    return order;
}

void ReceiptFlow::takeReceipt()
{
    if (!SaleSession::hasCurrent(session_.rsCustSaleMaster))
        return;
    const Order order = currentOrder();
    switch (existsOperation(order.key)) {
    case -1:
        tellConnectionFailure(QStringLiteral("수납 작업"));
        break;
    case 0:
        openSimpleReceipt(order, {});
        break;
    default:
        takeFurtherOperation(order);
        break;
    }
}

void ReceiptFlow::editCurrentRow()
{
    const LedgerKey row = ledgerPane_.currentRow();
    if (row && SaleSession::hasCurrent(session_.rsCustSaleMaster))
        openSimpleReceipt(currentOrder(), row);
}

void ReceiptFlow::openSimpleReceipt(const Order &order, LedgerKey edited)
{
    const controls::Modal<frmSimpleReceipt> insfrmSimpleReceipt(owner_);
    connect(insfrmSimpleReceipt.get(), &frmSimpleReceipt::AppendDBGeneral, this,
            [this](qint32 lngCustPK, const QDate &date, float discount, float cut, float cash, float card,
                   float outstanding, qint32 lngOrdMPK, const QString &) {
                insfrmSimpleReceipt_AppendDBGeneral(
                    {CustomerKey(lngCustPK), OrderKey(lngOrdMPK), date, discount, cut, cash, card}, outstanding);
            });
    connect(insfrmSimpleReceipt.get(), &frmSimpleReceipt::ExecuteDB, this,
            [this, edited](qint32 lngCustPK, const QDate &date, qint16 intOperator, qint32 lngMoney, qint32 lngOrdMPK,
                           const QString &) {
                insfrmSimpleReceipt_ExecuteDB(
                    edited, {CustomerKey(lngCustPK), OrderKey(lngOrdMPK), date, intOperator, lngMoney, QString()});
            });
    insfrmSimpleReceipt->Operation(1, order.customer.number(), session_.customer.name, session_.customer.chartNumber,
                                   order.date, order.lngTotal, order.key.number(), edited ? -1 : 0,
                                   QDate::currentDate(), 0, QStringLiteral("0"), owner_);
}

/// Errors are shown here and the dialog closes all the same: saving again would write the rows twice.
void ReceiptFlow::insfrmSimpleReceipt_AppendDBGeneral(const ledger::FirstPayment &payment, float outstanding)
{
    controls::runEvent([&] {
        const auto show = qScopeGuard([this, alive = QPointer<ReceiptFlow>(this)] {
            if (!alive) // a row that is shown may have opened a box
                return;
            // After a failure too, so that the rows that were written are seen.
            runtime::Attempt attempt;
            attempt([this] { showWritten(); });
            attempt([this] { emit session_.orderTotalsChanged(); });
        });
        session_.readAnewOnConflict([&] {
            ledger::appendFirstPayment(*gcnnMasterDB, payment);
            if (outstanding == 0)
                return;
            ledger::addOutstanding(*session_.rsCustSaleMaster, payment.order,
                                   Currency::fromWon(runtime::CLng(double(outstanding))));
            emit orderGridMustRefresh();
        });
    });
}

void ReceiptFlow::showWritten()
{
    ledgerPane_.requeryCustTranManage();
    emit orderGridMustRebind();
}

void ReceiptFlow::insfrmSimpleReceipt_ExecuteDB(LedgerKey edited, const ledger::Row &row)
{
    try {
        ledger::updateRow(*gcnnMasterDB, edited, row);
        emit orderGridMustRefresh();
        showWritten();
    } catch (const runtime::RuntimeError &error) {
        runtime::trapped();
        runtime::Attempt show; // what the server saved before it was lost
        show([this] { showWritten(); });
        if (error.number() == runtime::ErrorNumber::Conflict)
            MsgBox(error.description(), InformationIcon, QStringLiteral("수납 내역 수정"), owner_);
        else
            tellConnectionFailure(QStringLiteral("데이터베이스 접속 오류"));
    }
}

void ReceiptFlow::takeFurtherOperation(const Order &order)
{
    const std::optional<LedgerSums> sums = ledgerSumsOf(order.key);
    if (!sums) {
        tellConnectionFailure(QStringLiteral("수납 작업"));
        return;
    }
    bool bRecalc = order.owes;
    ledger::Row row{order.customer, order.key, order.date, 0, 0, QString()};
    const QPointer<ReceiptFlow> alive(this);
    const controls::Modal<frmSimpleReceiptAdd> dialog(owner_);
    const bool saved =
        dialog->OperationAdd(owner_, order.date, order.lngTotal, sums->discount, sums->cut, sums->payment, sums->refund,
                             order.key.number(), session_.customer.chartNumber, session_.customer.name, row.date,
                             row.intOperator, row.lngMoney, row.strMethod, bRecalc);
    if (!alive)
        return;
    const auto show = qScopeGuard([this, alive] {
        if (!alive) // a row that is shown may have opened a box
            return;
        // After a failure too, or the user would write the row again; after a cancellation too, since another desk may
        // have written meanwhile.
        runtime::Attempt attempt;
        attempt([this] { ledgerPane_.requeryCustTranManage(); });
        attempt([this] { emit session_.orderTotalsChanged(); });
    });
    session_.readAnewOnConflict([&] {
        if (saved)
            writeFurtherOperation(row, bRecalc);
        else if (session_.rsCustSaleMaster)
            ledger::standOnOrder(*session_.rsCustSaleMaster, order.key);
    });
}

void ReceiptFlow::writeFurtherOperation(const ledger::Row &row, bool bRecalc)
{
    ledger::insertRow(*gcnnMasterDB, row);
    // Quirk (docs/architecture.md): whatever the operation, so a refund lessens the outstanding money too.
    if (bRecalc)
        ledger::addOutstanding(*session_.rsCustSaleMaster, row.order, -Currency::fromWon(row.lngMoney));
    else
        ledger::standOnOrder(*session_.rsCustSaleMaster, row.order);
}

void ReceiptFlow::tellConnectionFailure(const QString &title) const
{
    const QString text = QStringLiteral("데이터베이스 접속에 문제가 생겼습니다.") + QLatin1Char('\r')
                         + QStringLiteral("프로그램을 종료하고 네트워크를 확인한 후") + QLatin1Char('\r')
                         + QStringLiteral("다시 시도해 보십시오.");
    MsgBox(text, InformationIcon, title, owner_);
}
