#pragma once

#include "platform/ado/Recordset.h"
#include "platform/runtime/Currency.h"

#include <QString>

#include <functional>

/// What a receipt prints of the lines and the ledger of an order.
namespace receipt {

/// One line of an order as the receipts print it.
struct Line
{
    qint16 intItem = 1; ///< running number from 1
    QString name;
    QString category; ///< "*" in front when taxed
    bool taxed = false;
    runtime::Currency curUnit;
    runtime::Currency curDisc;
    qint16 intCount = 0;
    QString kind; ///< "일반판매", "반품", "서비스" or empty

    runtime::Currency amount() const { return intCount * (curUnit - curDisc); }
    /// "001", "012", "123", "1234".
    QString number() const;
};

/// How a line's numbers are read from their columns: a page takes NULL as 0, the roll writes a 0 before the text.
enum class Numbers { NullIsZero, LeadingZero };

/// Running sums over the lines.
struct Sums
{
    runtime::Currency curTaxed;
    runtime::Currency curFree;
    runtime::Currency curHalinSum; ///< of the discounts per unit, once a line whatever its count

    void add(const Line &line);
};

/// Reads the lines of an order in their order, without loss lines. Numbers run on from `intItem`, which is left at the next
/// one. Raises what the statement or a conversion raises.
void readLines(const ado::ConnectionPtr &connection, qint32 lngOrdMPK, Numbers numbers, qint16 &intItem,
               const std::function<void(const Line &)> &print);

/// Totals of the ledger, all 0 without a row.
struct LedgerTotals
{
    runtime::Currency curSunap;
    runtime::Currency curCash;
    runtime::Currency curCard;
    runtime::Currency curHalin;
    runtime::Currency curJeolsa;
    runtime::Currency curRefund;
};

/// Raises TypeMismatch for a negative total.
LedgerTotals readTotals(const ado::ConnectionPtr &connection, const QString &statement);
/// The money received for an order, 0 without a row. Raises TypeMismatch when it is negative; the other totals are not read.
runtime::Currency readReceived(const ado::ConnectionPtr &connection, qint32 lngOrdMPK);

/// "1,234,567".
QString money(runtime::Currency amount);

} // namespace receipt
