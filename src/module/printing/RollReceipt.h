#pragma once

#include "platform/ado/Connection.h"
#include "platform/print/Document.h"
#include "platform/print/RollPaper.h"

#include <QDate>
#include <QString>
#include <QVariant>
#include <QWidget>

/// What a roll receipt is of.
struct RollReceiptOrder
{
    ado::ConnectionPtr connection;
    qint32 lngCustPK;
    QString customerName;
    qint32 lngOrdMPK;
    QVariant orderDate;
};

/// Prints the receipt of an order on this station's roll printer, without preview. Tells in a box when there is no such
/// printer or only one that prints no graphics. Every other error passes to the caller, with nothing printed: also when the
/// printer's paper holds no receipt that can be read.
void PrintRollPrintReceipt(QWidget *owner, const RollReceiptOrder &order);

/// Composes, prints and leaves a line in the log; the printer's driver feeds and cuts.
void Print2EpsonTMPartialCut(const QString &printer, const RollReceiptOrder &order);

/// The receipt alone, on one sheet as long as its lines or on as many of the paper's own as it takes.
print::Document rollReceipt(const RollReceiptOrder &order, const print::RollPaper &paper);
