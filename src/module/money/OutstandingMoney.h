#pragma once

#include "money/LedgerOperations.h"

/// Orders with outstanding money, and later payments against them.
namespace outstanding {

/// Whose orders a list holds.
enum ListMode : qint16 { AllCustomers = 0, OneCustomer = 1 };

/// Orders with outstanding money, negative ones included, by customer's name and then the newest first. `lngCustPK` counts
/// in a list of one customer only; a mode that is neither of the two leaves nothing out.
QString listSQL(qint16 intMode, qint32 lngCustPK);

/// Takes the money off the order's outstanding money and writes the ledger row, both or neither. Raises RuntimeError; an
/// order that is gone is refused as well, and one whose ledger is not as it was `seen`. Negative money raises what is owed.
void pay(ado::Connection &connection, const ledger::Row &row, LedgerSight *seen = nullptr);

} // namespace outstanding
