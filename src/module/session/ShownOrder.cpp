#include "session/ShownOrder.h"

#include "platform/ado/Recordset.h"

ShownOrder shownOrder(const ado::Recordset &orders)
{
    return {OrderKey(orders[QStringLiteral("OrdM_PK")]), CustomerKey(orders[QStringLiteral("Cust_PK")]),
            orders[QStringLiteral("OrdM_Date")].toDate()};
}
