#pragma once

#include "session/SaleSession.h"

#include <QLabel>
#include <QStatusBar>

/// The window's status bar: at its left whose sale it is, at its right what was done last and what the customer owes.
class StatusLine : public QObject
{
    Q_OBJECT
public:
    explicit StatusLine(QStatusBar *bar);

    void showCustomer(const QString &text) { customer_->setText(text); }
    /// What was done; stays until the next.
    void tell(const QString &done);
    /// The outstanding money of all orders of the list and their number; nothing where none is owed.
    void showOwed(const SaleSession::RecordsetPtr &orders);

private:
    QLabel *customer_;
    QLabel *done_;
    QLabel *owed_;
};
