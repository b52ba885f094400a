#pragma once

#include "platform/controls/PushCheck.h"

#include <QDateEdit>
#include <QList>
#include <QWidget>

/// The buttons above the orders: change and delete, the receipts and the period of one. Deleting stands apart.
class OrderStrip : public QWidget
{
    Q_OBJECT
public:
    explicit OrderStrip(QWidget *parent);

    controls::PushCheck *chkCmdOrderMasterED(int index) const { return chkCmdOrderMasterED_.at(index); }
    controls::PushCheck *chkCmdPrintReceipt(int index) const { return chkCmdPrintReceipt_.at(index); }
    controls::PushCheck *chkCmdPrintReceiptRollPrinter() const { return chkCmdPrintReceiptRollPrinter_; }
    QDateEdit *uxStartDateDTP() const { return uxStartDateDTP_; }
    QDateEdit *uxEndDateDTP() const { return uxEndDateDTP_; }

private:
    void placeButtons();

    QList<controls::PushCheck *> chkCmdOrderMasterED_;
    QList<controls::PushCheck *> chkCmdPrintReceipt_;
    controls::PushCheck *chkCmdPrintReceiptRollPrinter_;
    QDateEdit *uxStartDateDTP_;
    QDateEdit *uxEndDateDTP_;
};
