#pragma once

#include "money/LedgerOperations.h"
#include "money/LedgerSight.h"
#include "money/frmSimpleReceipt.h"
#include "session/SaleSession.h"

#include <QObject>
#include <QWidget>

#include <functional>
#include <optional>

class LedgerPane;

/// The button "수납": takes the first payment of the current order, or a further operation once its ledger has rows. The
/// dialogs write nothing; their events land here and are written here.
class ReceiptFlow : public QObject
{
    Q_OBJECT
public:
    /// `owner` is the window that the dialogs stand over.
    ReceiptFlow(SaleSession &session, LedgerPane &ledgerPane, QWidget *owner);

    /// The button's work. Without a current order nothing happens.
    void takeReceipt();
    /// Opens the current ledger row for change. Quirk (docs/architecture.md): the dialog starts with today, amount 0
    /// and no operator instead of the row's own values.
    void editCurrentRow();

signals:
    // For the grid of the orders, another pane's.
    void orderGridMustRefresh(); ///< repaint what is cached
    void orderGridMustRebind();  ///< read the view anew without moving

private:
    /// The order at hand as the dialogs want it.
    struct Order
    {
        ShownOrder shown;
        qint32 lngTotal = 0;
        runtime::Currency outstanding;
    };
    /// The current order, which there is. Conflict when another desk deleted it.
    Order currentOrder();
    /// What the order's ledger holds; nothing, and told, when it cannot be read.
    std::optional<LedgerSight> look(const Order &order) const;

    /// With a row, that one is to be changed.
    void openSimpleReceipt(const Order &order, const LedgerSight &asSeen, const ledger::ShownRow &edited);
    frmSimpleReceipt::EditedRow rowOnView() const;
    void takeFurtherOperation(const Order &order, LedgerSight seen);
    /// False when the user does not want it any more; the first step is then not written either.
    bool writeOnSeenLedger(LedgerSight &seen, const std::function<void()> &firstStep);
    /// Whether it was written.
    bool writeFurtherOperation(LedgerSight &seen, const ledger::Row &row, bool bRecalc, ado::Foresight &shown);
    void insfrmSimpleReceipt_AppendDBGeneral(LedgerSight &seen, const ledger::FirstPayment &payment, float outstanding);
    void insfrmSimpleReceipt_ExecuteDB(const ledger::ShownRow &edited, const ledger::Row &row);
    void showWritten();
    void tellConnectionFailure(const QString &title) const;

    SaleSession &session_;
    LedgerPane &ledgerPane_;
    QWidget *owner_;
};
