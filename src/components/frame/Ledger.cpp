#include "components/frame/Ledger.h"

namespace statistics {

Medium mediumOf(const QString &method)
{
    if (method.endsWith(QLatin1Char('1')))
        return Medium::Card;
    return method.endsWith(QLatin1Char('2')) ? Medium::Bank : Medium::Cash;
}

bool isAgainstOutstanding(const QString &method)
{
    return method.startsWith(QLatin1Char('1'));
}

QString ledgerWithOrders()
{
    return QStringLiteral("tPSTransaction LEFT JOIN tPSOrderMaster "
                          "ON tPSTransaction.tpstrans_OrderM_PK = tPSOrderMaster.OrdM_PK "
                          "AND tPSTransaction.tpstrans_Customer_PK = tPSOrderMaster.Cust_PK ");
}

QString afterItsDay()
{
    return QStringLiteral("CASE WHEN OrdM_Date < tpstrans_Date THEN 1 ELSE 0 END");
}

bool isReceivedLater(const QString &method, bool afterItsDay)
{
    return afterItsDay || isAgainstOutstanding(method);
}

} // namespace statistics
