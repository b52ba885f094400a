#pragma once

#include "data/Codes.h"
#include "platform/ado/Connection.h"
#include "platform/ado/Recordset.h"
#include "platform/runtime/Currency.h"
#include "session/ShownOrder.h"

#include <QDate>
#include <QString>

#include <vector>

class LedgerSight;

/// What is written to the ledger and to the outstanding money of an order. Each raises RuntimeError and shows nothing.
namespace ledger {

/// How the first payment splits an order's total. Amounts are single precision, as the dialog counts; negative ones are
/// written too.
struct FirstPayment
{
    ShownOrder order;
    QDate date;
    float discount = 0;
    float cut = 0;
    float cash = 0;
    float card = 0;
};

/// One ledger row, amount in whole won.
struct Row
{
    ShownOrder order;
    QDate date;
    qint16 intOperator = 0;
    qint32 lngMoney = 0;
    QString strMethod;
};

/// A row for each amount that is not 0, rounded half to even to whole won.
std::vector<Row> rowsOf(const FirstPayment &payment);
/// Writes them. There is no transaction around them: a failure half-way leaves the rows before it.
void appendFirstPayment(ado::Connection &connection, const FirstPayment &payment);
/// Conflict when the order is not the one that was shown, or its ledger not as it was `seen`.
void insertRow(ado::Connection &connection, const Row &row, LedgerSight *seen = nullptr);

/// A ledger row as its list last showed it.
struct ShownRow
{
    LedgerKey key;
    QVariantList values; ///< of all its columns

    explicit operator bool() const { return bool(key); }
};
/// The current row.
ShownRow shownRow(const ado::Recordset &ledger);
/// Gives a row new values but leaves its method and memo alone, and its operator where none was chosen, in a transaction
/// of its own. Conflict when another desk changed or deleted it.
void updateRow(ado::Connection &connection, const ShownRow &shown, const Row &row);

/// Raises Conflict for what another desk changed or deleted.
[[noreturn]] void raiseGone(const QString &told);

/// Makes the order current and reads it again. Conflict when it is gone, or another customer's by now.
void standOnOrder(ado::Recordset &rsCustSaleMaster, const ShownOrder &order);
/// Writes the outstanding money of the current order. What could not be saved does not stay pending.
void storeOutstanding(ado::Recordset &rsCustSaleMaster, runtime::Currency money);
/// Adds to the outstanding money of the order, NULL counting as 0; negative money takes off. The order is read again
/// before the sum, so that what another desk wrote since is not lost, and after it. Conflict as insertRow().
void addOutstanding(ado::Connection &connection, ado::Recordset &rsCustSaleMaster, const ShownOrder &order,
                    runtime::Currency money, LedgerSight *seen = nullptr);

} // namespace ledger
