#include "session/SaleSession.h"

void SaleSession::release()
{
    for (RecordsetPtr *recordset : {&rsCustSaleDetailsClone, &rsCustSaleDetails, &rsProductIncoming, &rsCustSaleMaster,
                                    &rsCustTranManage, &rsSaleProductLists, &rsSaleProductListsManager,
                                    &rsCompanyMaster}) {
        if (*recordset && (*recordset)->isOpen())
            (*recordset)->Close();
        recordset->reset();
    }
}
