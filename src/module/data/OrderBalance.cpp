#include "data/OrderBalance.h"

#include "data/clsSQL.h"
#include "platform/ado/Recordset.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/Operation.h"
#include "platform/runtime/RuntimeError.h"

#include <algorithm>

using runtime::Currency;

namespace {

struct TotalColumn
{
    const char16_t *column;
    Currency OrderTranTotals::*total;
};

constexpr TotalColumn totalColumns[] = {
    {u"절사토탈", &OrderTranTotals::cut},
    {u"할인토탈", &OrderTranTotals::discount},
    {u"수납토탈", &OrderTranTotals::payment},
    {u"환불토탈", &OrderTranTotals::refund},
    {u"현금토탈", &OrderTranTotals::cash},
    {u"카드토탈", &OrderTranTotals::card},
    {u"현금미수토탈", &OrderTranTotals::cashOutstanding},
    {u"카드미수토탈", &OrderTranTotals::cardOutstanding},
};

Currency zeroWhenNull(const QVariant &money)
{
    return runtime::isNull(money) ? Currency() : runtime::CCur(money);
}

} // namespace

qint16 getOrderTranTotals(const ado::ConnectionPtr &connection, qint32 lngCustPK, qint32 lngOrdMPK,
                          OrderTranTotals &totals)
{
    const runtime::Operation operation("sum ledger", {{"order", lngOrdMPK}, {"customer", lngCustPK}});
    totals = {};
    try {
        ado::Recordset rows;
        rows.Open(clsSQL().getAllTranAmount(lngCustPK, lngOrdMPK), connection, ado::CursorType::Static,
                  ado::LockType::ReadOnly);
        if (!rows.hasCurrent())
            return 0;
        rows.MoveFirst();
        OrderTranTotals read;
        for (const TotalColumn &entry : totalColumns)
            read.*entry.total = zeroWhenNull(rows[QString::fromUtf16(entry.column)]);
        totals = read;
        return 1;
    } catch (const runtime::RuntimeError &) {
        runtime::trapped();
        return -1;
    }
}

Currency calcOrderBalance(const ado::Recordset *rsCustSaleMaster, const ado::ConnectionPtr &connection,
                          qint32 lngCustPK, qint32 lngOrdMPK)
{
    OrderTranTotals ledger;
    const qint16 flag = getOrderTranTotals(connection, lngCustPK, lngOrdMPK, ledger);
    if (flag < 0 || !rsCustSaleMaster || !rsCustSaleMaster->hasCurrent())
        return {};
    const Currency total = zeroWhenNull(rsCustSaleMaster->value(QStringLiteral("OrdM_Total")));
    return total + ledger.refund - (ledger.cut + ledger.discount + ledger.payment);
}

Currency calcOrderMisugum(const ado::Recordset *rsCustSaleMaster, const ado::ConnectionPtr &connection,
                          qint32 lngCustPK, qint32 lngOrdMPK)
{
    return std::max(Currency(), calcOrderBalance(rsCustSaleMaster, connection, lngCustPK, lngOrdMPK));
}
