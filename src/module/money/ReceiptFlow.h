#pragma once

#include "money/LedgerOperations.h"
#include "session/SaleSession.h"

#include <QObject>
#include <QWidget>

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
        OrderKey key;
        CustomerKey customer;
        QDate date;
        qint32 lngTotal = 0;
        bool owes = false; ///< outstanding money is recorded
    };
    /// The current order, which there is. Conflict when another desk deleted it.
    Order currentOrder();

    /// With a row, that one is to be changed.
    void openSimpleReceipt(const Order &order, LedgerKey edited);
    void takeFurtherOperation(const Order &order);
    void writeFurtherOperation(const ledger::Row &row, bool bRecalc);
    void insfrmSimpleReceipt_AppendDBGeneral(const ledger::FirstPayment &payment, float outstanding);
    void insfrmSimpleReceipt_ExecuteDB(LedgerKey edited, const ledger::Row &row);
    void showWritten();
    void tellConnectionFailure(const QString &title) const;

    SaleSession &session_;
    LedgerPane &ledgerPane_;
    QWidget *owner_;
};
