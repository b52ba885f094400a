#pragma once

#include "session/SaleSession.h"

#include <QObject>
#include <QWidget>

class LedgerPane;

/// The button "미수금관리": lists the customer's orders with outstanding money, then reads the session's orders anew.
class OutstandingFlow : public QObject
{
    Q_OBJECT
public:
    /// `owner` is the window that the dialogs stand over.
    OutstandingFlow(SaleSession &session, LedgerPane &ledgerPane, QWidget *owner);

private:
    void showOutstandingMoney();

    SaleSession &session_;
    QWidget *owner_;
};
