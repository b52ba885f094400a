#include "clinic/Indexes.h"

namespace clinic {

std::span<const Index> indexes()
{
    static const Index all[]{
        {"ixOrderMasterCustomer", "tPSOrderMaster", "Cust_PK, OrdM_Date"},
        // With the key, so that a server finds the range of a period's orders without a look at them.
        {"ixOrderMasterDate", "tPSOrderMaster", "OrdM_Date, OrdM_PK"},
        // Few orders have money outstanding, and a list of them must not look at all the others.
        {"ixOrderMasterOutstanding", "tPSOrderMaster", "Cust_PK, OrdM_Date", "OrdM_Misugum <> 0"},
        {"ixOrderDetailOrder", "tPSOrderDetail", "OrdM_PK"},
        // Whole, so that the stock is counted without a look at the lines themselves.
        {"ixOrderDetailProduct", "tPSOrderDetail", "PM_PK, OrdD_OrderType, OrdD_Count"},
        {"ixTransactionOrder", "tPSTransaction", "tpstrans_OrderM_PK"},
        {"ixTransactionCustomer", "tPSTransaction", "tpstrans_Customer_PK, tpstrans_Date"},
        {"ixTransactionDate", "tPSTransaction", "tpstrans_Date"},
        // Whole as well: sums and last prices of purchases are read from it alone.
        {"ixIncomingProduct", "tPSIncoming", "PM_PK, IN_Date, IN_UnitPrice, IN_Count"},
        {"ixReceiptCustomer", "Receipt", "Customer_PK"},
    };
    return all;
}

} // namespace clinic
