#include "money/frmMisuMoneyManager.h"

#include "money/OutstandingMoney.h"
#include "money/askWhetherToSave.h"
#include "money/frmMisuMoneyPay.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Modal.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Log.h"
#include "settings/clsFormPosition.h"
#include "settings/modFormLocate.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopeGuard>

#include <algorithm>
#include <utility>

using controls::InformationIcon;
using controls::MsgBox;
using runtime::Currency;

namespace {

const QString payTitle = QStringLiteral("미수금 수납");

QString countText(qint32 number)
{
    return runtime::Format(number, QStringLiteral("##,###")); // nothing for 0
}

qint32 wholeNumber(const QVariant &stored)
{
    return runtime::CLng(runtime::Val(stored));
}

} // namespace

frmMisuMoneyManager::frmMisuMoneyManager(QWidget *owner)
    : QDialog(owner)
{
    createControls();
    connectControls();
    setKeys();
}

frmMisuMoneyManager::~frmMisuMoneyManager() = default;

void frmMisuMoneyManager::connectControls()
{
    using controls::onEvent;
    using controls::RecordsetGrid;
    onEvent(dgReceiptView_, &RecordsetGrid::headClick, this,
            [this](int column) { sortBy(column, QApplication::keyboardModifiers().testFlag(Qt::ControlModifier)); });
    onEvent(dgReceiptView_, &RecordsetGrid::rowDoubleClicked, this, [this] { cmdMisuMoneyPay_->setValue(1); });
    onEvent(dgReceiptView_, &RecordsetGrid::rowChange, this, [this] {
        if (rsReceiptView_ && rsReceiptView_->hasCurrent())
            dgReceiptView_->setFocus();
    });
    cmdMisuMoneyPay_->onPush(this, [this] { payCurrent(); });
    connect(cmdClose_, &QPushButton::clicked, this, &QDialog::reject);
}

qint16 frmMisuMoneyManager::MisuMoneyManager(const ado::ConnectionPtr &cnCon, QWidget *frmOwner, qint16 intMode,
                                             qint32 lngCustPK, qint32)
{
    cnCon_ = cnCon;
    intListMode_ = intMode;
    lngCustPK_ = lngCustPK;
    const QPointer<frmMisuMoneyManager> self(this);
    const auto release = qScopeGuard([self] {
        if (!self) // the window may have gone and taken the dialog along
            return;
        self->dgReceiptView_->setDataSource(nullptr);
        self->rsReceiptView_.reset();
        self->cnCon_.reset();
    });
    const auto tellNotOpened = [frmOwner] {
        MsgBox(QStringLiteral("데이터베이스 접속에 오류가 발생했습니다. 네트워크를 확인하세요."), InformationIcon,
               QStringLiteral("미수금 관리"), frmOwner);
        return qint16{0};
    };
    if (!openList())
        return tellNotOpened();
    if (rsReceiptView_->hasAllRows())
        computeTotals();
    else
        rsReceiptView_->moveTo(rsReceiptView_->rowCount()); // the sums come with the rest, no part of them before
    if (frmOwner)
        clsFormPosition().CenterMain(*frmOwner->window(), *this);
    else
        clsFormPosition().CenterScreen(*this);
    keepOnScreen(*this);
    setWindowModality(Qt::ApplicationModal);
    controls::runModal(this);
    if (!self)
        return -1;
    if (sumFailure_)
        std::rethrow_exception(sumFailure_);
    return readFailed_ ? tellNotOpened() : qint16{-1};
}

bool frmMisuMoneyManager::openList()
{
    rsReceiptView_ = std::make_unique<ado::Recordset>();
    dgReceiptView_->setDataSource(rsReceiptView_.get());
    rsReceiptView_->setCursorLocation(ado::CursorLocation::Client);
    if (intListMode_ != outstanding::OneCustomer)
        rsReceiptView_->openWithFirstRows();
    runtime::Attempt attempt;
    attempt([this] {
        rsReceiptView_->Open(outstanding::listSQL(intListMode_, lngCustPK_), cnCon_, ado::CursorType::Keyset,
                             ado::LockType::Optimistic);
        dgReceiptView_->Rebind();
    });
    return !attempt.failed();
}

bool frmMisuMoneyManager::readRest()
{
    if (!rsReceiptView_ || readFailed_ || rsReceiptView_->hasAllRows())
        return !readFailed_;
    const ado::Bookmark chosen = rsReceiptView_->bookmark();
    runtime::Attempt attempt;
    attempt([this] {
        rsReceiptView_->Requery();
        dgReceiptView_->Rebind();
    });
    readFailed_ = attempt.failed();
    try {
        if (!readFailed_)
            computeTotals();
    } catch (const runtime::RuntimeError &) {
        sumFailure_ = std::current_exception();
    }
    if (readFailed_ || sumFailure_)
        reject();
    else if (chosen.isValid()) // by a user who was faster
        rsReceiptView_->moveToKey(chosen);
    return isVisible();
}

void frmMisuMoneyManager::computeTotals()
{
    const int field = rsReceiptView_->columnIndex(QStringLiteral("OrdM_Misugum"));
    const int rows = rsReceiptView_->rowCount();
    const int first = rsReceiptView_->hasCurrent() ? rsReceiptView_->currentRow() : rows;
    qint32 total = 0;
    for (int row = first; row < rows; ++row)
        total = runtime::CLng(
            QVariant::fromValue(Currency::fromWon(total) + runtime::CCur(rsReceiptView_->valueAt(row, field))));
    txtCount_->setText(countText(rows - first));
    txtTotal_->setText(countText(total));
    rsReceiptView_->moveTo(rows);
}

/// A click sorts by one column; with Ctrl held it sorts by the columns chosen before and then by this one.
void frmMisuMoneyManager::sortBy(int column, bool asWell)
{
    if (!readRest())
        return;
    if (!asWell)
        sortColumns_.clear();
    if (std::find(sortColumns_.begin(), sortColumns_.end(), column) == sortColumns_.end())
        sortColumns_.push_back(column);
    QString order;
    for (const int chosen : sortColumns_) {
        const QString &field = dgReceiptView_->columns()[std::size_t(chosen)].field;
        if (!order.isEmpty())
            order += QStringLiteral(", ");
        // Quirk (docs/architecture.md): no column of this list has that field.
        const bool newestFirst = field == QLatin1String("TxDate");
        order += QLatin1Char('[') + field + (newestFirst ? QStringLiteral("] DESC") : QStringLiteral("]"));
    }
    rsReceiptView_->Sort(order);
    dgReceiptView_->horizontalHeader()->setSortIndicator(sortColumns_.front(), Qt::AscendingOrder);
}

frmMisuMoneyManager::Order frmMisuMoneyManager::currentOrder() const
{
    const ado::Recordset &rows = *rsReceiptView_;
    return {shownOrder(rows), runtime::text(rows[QStringLiteral("sn")]), runtime::text(rows[QStringLiteral("name")]),
            wholeNumber(rows[QStringLiteral("OrdM_Misugum")]), wholeNumber(rows[QStringLiteral("OrdM_Total")])};
}

void frmMisuMoneyManager::payCurrent()
{
    if (!readRest() || !rsReceiptView_ || !rsReceiptView_->hasCurrent())
        return;
    LedgerSight seen = LedgerSight::of(*cnCon_, shownOrder(*rsReceiptView_)); // before what the dialog shows is read
    if (!readCurrentAgain())
        return;
    const Order order = currentOrder();
    if (order.lngMisu == 0) {
        MsgBox(QStringLiteral("현재 기록된 미수금이 없습니다."), InformationIcon, payTitle, this);
        return;
    }
    Payment payment;
    if (askPayment(order, payment) && payment.lngMoney != 0)
        record(order, payment, seen);
}

/// What another desk has collected since the list was opened must not be collected once more. False, and told, when it
/// deleted the order: the list is read anew without it.
bool frmMisuMoneyManager::readCurrentAgain()
{
    try {
        rsReceiptView_->Resync();
        return true;
    } catch (const runtime::RuntimeError &error) {
        if (error.number() != runtime::ErrorNumber::Conflict)
            throw;
        runtime::trapped();
    }
    rsReceiptView_->Requery();
    dgReceiptView_->Rebind();
    computeTotals();
    MsgBox(QStringLiteral("다른 데스크에서 먼저 삭제한 거래입니다. 목록을 새로 가져왔습니다."), InformationIcon,
           payTitle, this);
    return false;
}

bool frmMisuMoneyManager::askPayment(const Order &order, Payment &payment)
{
    const controls::Modal<frmMisuMoneyPay> dialog(this);
    return dialog->MisuMoneyPayBoninGeneral(cnCon_, order.strChartNum, order.strName, order.shown.date,
                                            order.shown.number(), order.lngMisu, order.lngTotal, payment.date,
                                            payment.lngMoney, payment.strMethod);
}

void frmMisuMoneyManager::showPaidOrder()
{
    rsReceiptView_->Resync();
    dgReceiptView_->Refresh();
    computeTotals();
}

void frmMisuMoneyManager::record(const Order &order, const Payment &payment, LedgerSight &seen)
{
    const QPointer<frmMisuMoneyManager> self(this);
    const ledger::Row row{order.shown, payment.date, ledger::Payment, payment.lngMoney, payment.strMethod};
    runtime::Attempt attempt;
    bool written = false;
    try {
        written = seen.write([&] { outstanding::pay(*cnCon_, row, &seen); },
                             [&](const QString &changes) { return askWhetherToSave(changes, payTitle, this) && self; });
        if (!self)
            return;
    } catch (const runtime::RuntimeError &error) {
        runtime::trapped();
        // A server that is lost may have saved before it went.
        const bool lost = error.number() == runtime::ErrorNumber::ConnectionLost;
        if (lost)
            attempt([this] { showPaidOrder(); });
        MsgBox((lost ? QStringLiteral("수납이 기록되었는지 알 수 없습니다.\n원인: ")
                     : QStringLiteral("수납이 기록되지 않았으며 바뀐 내용이 없습니다.\n원인: "))
                   + error.description(),
               InformationIcon, QStringLiteral("미수금 수납 기록 오류"), this);
        return;
    }
    if (written)
        paid_ += runtime::Currency::fromWon(payment.lngMoney);
    attempt([this] { showPaidOrder(); });
    // The payment is saved: the text must say so, or the user would take it again.
    if (written && attempt.failed())
        MsgBox(QStringLiteral("수납은 기록되었습니다. 다시 수납하지 마십시오. 목록은 새로 가져오지 못했습니다.\n원인: ")
                   + attempt.description(),
               InformationIcon, payTitle, this);
    if (self)
        dgReceiptView_->setFocus(); // the next order is chosen there
}

bool frmMisuMoneyManager::eventFilter(QObject *watched, QEvent *event)
{
    // Behind the painting, so that the first screen does not wait for it.
    if (watched == dgReceiptView_->viewport() && event->type() == QEvent::Paint && !std::exchange(restAsked_, true))
        QMetaObject::invokeMethod(
            this, [this] { controls::runEvent([this] { readRest(); }, this); }, Qt::QueuedConnection);
    if (watched == dgReceiptView_ && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Space) {
            if (!key->isAutoRepeat())
                cmdMisuMoneyPay_->setValue(1);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}
