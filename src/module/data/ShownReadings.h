#pragma once

#include "platform/ado/Foresight.h"
#include "platform/ado/Recordset.h"

#include <QtGlobal>

/// What the window reads when it shows something anew, told in that order.
namespace shownReadings {

void tellLines(ado::Foresight &next, qint32 lngOrdMPK);
void tellLedger(ado::Foresight &next, qint32 lngCustPK, qint32 lngOrdMPK);
/// What the customer still owes for the order.
void tellBalance(ado::Foresight &next, qint32 lngCustPK, qint32 lngOrdMPK);
/// An order of the list that the user steps onto, and all that belongs to it.
void tellOrderAt(ado::Foresight &next, const ado::Recordset &orders, int row, qint32 lngCustPK);
/// All that belongs to the order that is likely to stand first in the customer's list, which has come and is not opened yet;
/// then what stands there when none is chosen. It is sent at once; nothing is where the list is empty.
void sendFirstOrder(ado::Foresight &next, qint32 lngCustPK);
/// The customer's list of orders once more, then all that belongs to the one that is likely to stand first in it.
void tellOrders(ado::Foresight &next, const ado::Recordset &orders, qint32 lngCustPK);
/// The same where the current one is deleted first: the row that moves up goes before it.
void tellOrdersWithoutCurrent(ado::Foresight &next, const ado::Recordset &orders, qint32 lngCustPK);

} // namespace shownReadings
