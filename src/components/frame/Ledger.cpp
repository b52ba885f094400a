#include "components/frame/Ledger.h"

namespace statistics {

Medium mediumOf(QAnyStringView method)
{
    const QChar last = method.isEmpty() ? QChar() : method.back();
    if (last == u'1')
        return Medium::Card;
    return last == u'2' ? Medium::Bank : Medium::Cash;
}

bool isAgainstOutstanding(QAnyStringView method)
{
    return !method.isEmpty() && method.front() == u'1';
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

bool isReceivedLater(QAnyStringView method, bool afterItsDay)
{
    return afterItsDay || isAgainstOutstanding(method);
}

} // namespace statistics
