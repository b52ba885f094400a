#pragma once

#include "platform/ado/Connection.h"
#include "platform/runtime/Currency.h"

#include <QtGlobal>

namespace ado {
class Recordset;
}

/// Sums of one order's ledger rows. Quirk (docs/architecture.md): `cut` holds the discounts and `discount` the cuts,
/// since getAllTranAmount exchanges their labels. Use only the sum of the two.
struct OrderTranTotals
{
    runtime::Currency cut;
    runtime::Currency discount;
    runtime::Currency payment;
    runtime::Currency refund;
    runtime::Currency cash;
    runtime::Currency card;
    runtime::Currency cashOutstanding;
    runtime::Currency cardOutstanding;
};

/// Reads the sums of one order. Returns 1 when they were read, 0 for an empty answer, -1 when reading failed; all sums
/// are 0 unless it is 1.
qint16 getOrderTranTotals(const ado::ConnectionPtr &connection, qint32 lngCustPK, qint32 lngOrdMPK,
                          OrderTranTotals &totals);

/// What the customer still owes for the order: total + refund - (cut + discount + payment); negative when too much was
/// paid. The total is read from the current row of the orders, which must be the row of `lngOrdMPK`; 0 when there is no
/// current row or the ledger cannot be read.
runtime::Currency calcOrderBalance(const ado::Recordset *rsCustSaleMaster, const ado::ConnectionPtr &connection,
                                   qint32 lngCustPK, qint32 lngOrdMPK);

/// The same as outstanding money: 0 where it would be negative.
runtime::Currency calcOrderMisugum(const ado::Recordset *rsCustSaleMaster, const ado::ConnectionPtr &connection,
                                   qint32 lngCustPK, qint32 lngOrdMPK);
