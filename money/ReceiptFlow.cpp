#include "money/ReceiptFlow.h"

#include "money/LedgerPane.h"
#include "money/clsOperationMoney.h"
#include "money/frmSimpleReceipt.h"
#include "money/frmSimpleReceiptAdd.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
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

/// Nothing when one of them cannot be read: taken as 0 it would be asked of the customer once more.
std::optional<LedgerSums> ledgerSumsOf(qint32 lngOrdMPK)
{
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

qint16 existsOperation(qint32 lngOrdMPK)
{
    clsOperationMoney operations;
    operations.OPM_SetConnection(gcnnMasterDB);
    const qint16 exists = operations.OPM_ExistOperationByReceipt(lngOrdMPK);
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

ReceiptFlow::Order ReceiptFlow::currentOrder() const
{
    const ado::Recordset &orders = *session_.rsCustSaleMaster;
    return {runtime::CLng(orders[QStringLiteral("OrdM_PK")]), runtime::CLng(orders[QStringLiteral("Cust_PK")]),
            orders[QStringLiteral("OrdM_Date")].toDate(),
            runtime::CLng(runtime::Val(orders[QStringLiteral("OrdM_Total")]))};
}

void ReceiptFlow::takeReceipt()
{
    if (!SaleSession::hasCurrent(session_.rsCustSaleMaster))
        return;
    const Order order = currentOrder();
    switch (existsOperation(order.lngOrdMPK)) {
    case -1:
        tellConnectionFailure(QStringLiteral("수납 작업"));
        break;
    case 0:
        openSimpleReceipt(order, false);
        break;
    default:
        takeFurtherOperation(order);
        break;
    }
}

void ReceiptFlow::editCurrentRow()
{
    if (SaleSession::hasCurrent(session_.rsCustSaleMaster) && SaleSession::hasCurrent(session_.rsCustTranManage))
        openSimpleReceipt(currentOrder(), true);
}

void ReceiptFlow::openSimpleReceipt(const Order &order, bool edit)
{
    // The window may go while the dialog stands over it, and takes the dialog along.
    const QPointer<frmSimpleReceipt> insfrmSimpleReceipt = new frmSimpleReceipt(owner_);
    const auto release = qScopeGuard([&] { delete insfrmSimpleReceipt.data(); });
    connect(insfrmSimpleReceipt, &frmSimpleReceipt::AppendDBGeneral, this,
            [this](qint32 lngCustPK, const QDate &date, float discount, float cut, float cash, float card,
                   float outstanding, qint32 lngOrdMPK, const QString &) {
                insfrmSimpleReceipt_AppendDBGeneral({lngCustPK, lngOrdMPK, date, discount, cut, cash, card}, outstanding);
            });
    connect(insfrmSimpleReceipt, &frmSimpleReceipt::ExecuteDB, this,
            [this](qint32 lngCustPK, const QDate &date, qint16 intOperator, qint32 lngMoney, qint32 lngOrdMPK,
                   const QString &) {
                insfrmSimpleReceipt_ExecuteDB({lngCustPK, lngOrdMPK, date, intOperator, lngMoney, QString()});
            });
    insfrmSimpleReceipt->Operation(1, order.lngCustPK, session_.customer.name, session_.customer.chartNumber, order.date,
                                   order.lngTotal, order.lngOrdMPK, edit ? -1 : 0, QDate::currentDate(), 0,
                                   QStringLiteral("0"), owner_);
}

/// Whatever fails here is told now, and the dialog closes all the same: saving once more would double the rows written.
void ReceiptFlow::insfrmSimpleReceipt_AppendDBGeneral(const ledger::FirstPayment &payment, float outstanding)
{
    controls::runEvent([&] {
        const auto show = qScopeGuard([this] {
            // After a failure too, so that the rows that were written are seen.
            runtime::Attempt attempt;
            attempt([this] { showWritten(); });
            attempt([this] { emit session_.orderTotalsChanged(); });
        });
        ledger::appendFirstPayment(*gcnnMasterDB, payment);
        if (outstanding == 0)
            return;
        ledger::addOutstanding(*session_.rsCustSaleMaster, Currency::fromWon(runtime::CLng(double(outstanding))));
        emit orderGridMustRefresh();
    });
}

void ReceiptFlow::showWritten()
{
    ledgerPane_.requeryCustTranManage();
    emit orderGridMustRebind();
}

void ReceiptFlow::insfrmSimpleReceipt_ExecuteDB(const ledger::Row &row)
{
    if (!SaleSession::hasCurrent(session_.rsCustTranManage))
        return;
    try {
        const QVariant key = session_.rsCustTranManage->value(QStringLiteral("tpstrans_PK"));
        ledger::change(*gcnnMasterDB, runtime::CLng(key), row);
        emit orderGridMustRefresh();
        showWritten();
    } catch (const runtime::RuntimeError &) {
        runtime::Attempt show; // what the server saved before it was lost
        show([this] { showWritten(); });
        tellConnectionFailure(QStringLiteral("데이터베이스 접속 오류"));
    }
}

void ReceiptFlow::takeFurtherOperation(const Order &order)
{
    const std::optional<LedgerSums> sums = ledgerSumsOf(order.lngOrdMPK);
    if (!sums) {
        tellConnectionFailure(QStringLiteral("수납 작업"));
        return;
    }
    const QVariant stored = session_.rsCustSaleMaster->value(QStringLiteral("OrdM_Misugum"));
    bool bRecalc = runtime::Val(stored) != 0;
    ledger::Row row{order.lngCustPK, order.lngOrdMPK, order.date, 0, 0, QString()};

    const QPointer<frmSimpleReceiptAdd> dialog = new frmSimpleReceiptAdd(owner_);
    const auto release = qScopeGuard([&] { delete dialog.data(); });
    if (!dialog->OperationAdd(owner_, order.date, order.lngTotal, sums->discount, sums->cut, sums->payment, sums->refund,
                              order.lngOrdMPK, session_.customer.chartNumber, session_.customer.name, row.date,
                              row.intOperator, row.lngMoney, row.strMethod, bRecalc))
        return;

    const auto show = qScopeGuard([this] {
        // After a failure too: a row that is not seen would be written once more.
        runtime::Attempt attempt;
        attempt([this] { ledgerPane_.requeryCustTranManage(); });
        attempt([this] { emit session_.orderTotalsChanged(); });
    });
    ledger::append(*gcnnMasterDB, row);
    ado::Recordset &orders = *session_.rsCustSaleMaster;
    // Whatever the operation: a refund taken with recalculation lessens the outstanding money as well, and is meant to.
    if (bRecalc)
        ledger::addOutstanding(orders, -Currency::fromWon(row.lngMoney));
    else
        orders.Resync();
}

void ReceiptFlow::tellConnectionFailure(const QString &title) const
{
    const QString text = QStringLiteral("데이터베이스 접속에 문제가 생겼습니다.") + QLatin1Char('\r')
        + QStringLiteral("프로그램을 종료하고 네트워크를 확인한 후") + QLatin1Char('\r')
        + QStringLiteral("다시 시도해 보십시오.");
    MsgBox(text, InformationIcon, title, owner_);
}
