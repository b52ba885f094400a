#pragma once

#include "platform/print/Document.h"
#include "session/SaleSession.h"

#include <QDate>
#include <QWidget>

#include <functional>

/// The receipts on a page printer, for the current order and for the customer's orders of a period.
class PageReceipts
{
public:
    PageReceipts(SaleSession &session, QWidget *owner);

    /// Each composes its receipt and shows it in frmPrinter, which returns when closed. An error is told in a box and shows
    /// nothing. There must be a current order.
    void printOrderReceipt();
    void printPeriodReceipt(const QDate &dtStart, const QDate &dtEnd);

    // The pages alone; raise what a statement or a conversion raises.
    print::Document orderReceipt() const;
    print::Document periodReceipt(const QDate &dtStart, const QDate &dtEnd) const;

private:
    /// `days` names the file of the receipt, `which` its line in the log; both are asked when it is composed.
    template <typename Compose>
    void preview(Compose &&compose, const std::function<QString()> &days, const std::function<QString()> &which);

    SaleSession &session_;
    QWidget *owner_;
};
