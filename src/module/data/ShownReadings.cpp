#include "data/ShownReadings.h"

#include "data/clsSQL.h"

#include <algorithm>

namespace {

void tellOrder(ado::Foresight &next, qint32 lngCustPK, qint32 lngOrdMPK)
{
    shownReadings::tellLines(next, lngOrdMPK);
    shownReadings::tellLedger(next, lngCustPK, lngOrdMPK);
    shownReadings::tellBalance(next, lngCustPK, lngOrdMPK);
}

} // namespace

void shownReadings::tellLines(ado::Foresight &next, qint32 lngOrdMPK)
{
    next.open(clsSQL().getOrderDetailSQL(lngOrdMPK), ado::CursorType::Keyset);
}

void shownReadings::tellLedger(ado::Foresight &next, qint32 lngCustPK, qint32 lngOrdMPK)
{
    next.open(clsSQL().getCustTranSQL(lngCustPK, lngOrdMPK), ado::CursorType::Keyset);
}

void shownReadings::tellBalance(ado::Foresight &next, qint32 lngCustPK, qint32 lngOrdMPK)
{
    next.open(clsSQL().getAllTranAmount(lngCustPK, lngOrdMPK), ado::CursorType::Static);
}

void shownReadings::tellOrderAt(ado::Foresight &next, const ado::Recordset &orders, int row, qint32 lngCustPK)
{
    if (!next.isOfUse())
        return;
    next.row(orders, row);
    tellOrder(next, lngCustPK, orders.bookmarkAt(row).toInt());
}

void shownReadings::sendFirstOrder(ado::Foresight &next, qint32 lngCustPK)
{
    const std::vector<qint32> orders = next.keysThatCame(clsSQL().getOrderMasterSQL(lngCustPK));
    if (orders.empty())
        return;
    const qint32 newest = std::ranges::max(orders);
    tellOrder(next, lngCustPK, newest);
    tellLines(next, -1);
    tellLedger(next, -1, -1);
    tellBalance(next, lngCustPK, newest);
    next.send();
}

void shownReadings::tellOrders(ado::Foresight &next, const ado::Recordset &orders, qint32 lngCustPK)
{
    if (!next.isOfUse() || !orders.isOpen())
        return;
    next.open(orders.source(), ado::CursorType::Keyset);
    if (orders.rowCount() == 0)
        return;
    // The newest stands first; one that was just added stands last until the list is read anew.
    tellOrder(next, lngCustPK,
              std::max(orders.bookmarkAt(0).toInt(), orders.bookmarkAt(orders.rowCount() - 1).toInt()));
}

void shownReadings::tellOrdersWithoutCurrent(ado::Foresight &next, const ado::Recordset &orders, qint32 lngCustPK)
{
    const int current = orders.currentRow();
    if (!next.isOfUse() || current < 0)
        return;
    next.row(orders, current + 1 < orders.rowCount() ? current + 1 : current - 1);
    next.open(orders.source(), ado::CursorType::Keyset);
    if (orders.rowCount() > 1)
        tellOrder(next, lngCustPK, orders.bookmarkAt(current == 0 ? 1 : 0).toInt());
}
