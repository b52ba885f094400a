#pragma once

#include "platform/runtime/Currency.h"
#include "session/SaleSession.h"
#include "session/ShownOrder.h"

#include <QDate>
#include <QString>
#include <QVariant>

/// What stands in the ledger form, in stored values.
struct LedgerEntry
{
    QDate date;
    qint16 intOperator = 0;
    QVariant method; ///< NULL when none is chosen
    runtime::Currency money;
    QString memo;              ///< trimmed
    bool recalculates = false; ///< the outstanding money of the order is to follow
};

/// The writes of the ledger form, on the session's recordsets and gcnnMasterDB; they show nothing.
namespace ledger {

/// Adds a row to the order, in a transaction. False: it failed and the ledger stands as before, read anew.
bool addFormEntry(SaleSession &session, const ShownOrder &order, const LedgerEntry &entry);
/// Lets the order's outstanding money follow an entry that was added and saved: a payment sets it to the balance, a
/// refund adds to it unless it is NULL, which becomes 0. Raises RuntimeError.
void followAddedFormEntry(SaleSession &session, const ShownOrder &order, const LedgerEntry &entry);
/// Changes a row, but not its operator, and lets the outstanding money follow in the same transaction, whatever the
/// operator. False: it failed and nothing changed.
bool changeFormEntry(SaleSession &session, const ShownOrder &order, LedgerKey row, const LedgerEntry &entry);

} // namespace ledger
