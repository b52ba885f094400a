#pragma once

#include "data/Codes.h"
#include "platform/ado/Connection.h"
#include "platform/ado/Recordset.h"
#include "platform/runtime/Currency.h"
#include "session/Keys.h"

#include <QDate>
#include <QString>

/// What is written to the ledger and to the outstanding money of an order. Each raises RuntimeError and shows nothing.
namespace ledger {

/// How the first payment splits an order's total. Amounts are single precision, as the dialog counts; negative ones are
/// written too.
struct FirstPayment
{
    CustomerKey customer;
    OrderKey order;
    QDate date;
    float discount = 0;
    float cut = 0;
    float cash = 0;
    float card = 0;
};

/// One ledger row, amount in whole won.
struct Row
{
    CustomerKey customer;
    OrderKey order;
    QDate date;
    qint16 intOperator = 0;
    qint32 lngMoney = 0;
    QString strMethod;
};

/// Writes a row for each amount that is not 0, rounded half to even to whole won. There is no transaction around them: a
/// failure half-way leaves the rows before it.
void appendFirstPayment(ado::Connection &connection, const FirstPayment &payment);
void insertRow(ado::Connection &connection, const Row &row);
/// Gives a row new values but leaves its method and memo alone, and its operator where none was chosen, in a transaction
/// of its own. Conflict when another desk deleted it.
void updateRow(ado::Connection &connection, LedgerKey key, const Row &row);

/// Raises Conflict for what another desk deleted.
[[noreturn]] void raiseGone(const QString &told);

/// Makes the order current and reads it again. Conflict when it is gone.
void standOnOrder(ado::Recordset &rsCustSaleMaster, OrderKey order);
/// Writes the outstanding money of the current order. What could not be saved does not stay pending.
void storeOutstanding(ado::Recordset &rsCustSaleMaster, runtime::Currency money);
/// Adds to the outstanding money of the order, NULL counting as 0; negative money takes off. The order is read again
/// before the sum, so that what another desk wrote since is not lost, and after it.
void addOutstanding(ado::Recordset &rsCustSaleMaster, OrderKey order, runtime::Currency money);

} // namespace ledger
