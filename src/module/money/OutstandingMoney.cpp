#include "money/OutstandingMoney.h"

#include "data/HeldOrder.h"
#include "data/StatementText.h"
#include "data/clsSQL.h"
#include "money/LedgerSight.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/Operation.h"

namespace outstanding {

QString listSQL(qint16 intMode, qint32 lngCustPK)
{
    QString condition;
    if (intMode == AllCustomers)
        condition = QStringLiteral("WHERE tPSOrderMaster.OrdM_Misugum <> 0 ");
    else if (intMode == OneCustomer)
        condition = QStringLiteral("WHERE Cust_PK=[CUSTPK] AND OrdM_Misugum <> 0 ");
    const QString text = QStringLiteral("SELECT Customer.sn, Customer.name, tPSOrderMaster.* FROM tPSOrderMaster ")
                         + QStringLiteral("INNER JOIN Customer  ON tPSOrderMaster.Cust_PK = Customer.Customer_PK ")
                         + condition + QStringLiteral("ORDER BY Customer.name, tPSOrderMaster.OrdM_Date DESC");
    return statement::fill(text, {{u"[CUSTPK]", statement::number(lngCustPK)}});
}

void pay(ado::Connection &connection, const ledger::Row &row, LedgerSight *seen)
{
    const runtime::Operation operation("collect outstanding money",
                                       {{"order", row.order.number()}, {"customer", row.order.customer.number()}});
    ado::Transaction transaction(connection); // ends at once: nothing may stay locked while the user reads of an error
    holdOrder(connection, row.order);
    if (seen)
        seen->requireUnchanged(connection);
    connection.Execute(clsSQL().UpdatePSMisuMoney(row.order.number(), row.lngMoney));
    ledger::insertRow(connection, row);
    transaction.commit();
}

} // namespace outstanding
