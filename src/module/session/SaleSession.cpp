#include "session/SaleSession.h"

#include "platform/runtime/Attempt.h"

void SaleSession::release()
{
    for (RecordsetPtr *recordset :
         {&rsCustSaleDetailsClone, &rsCustSaleDetails, &rsProductIncoming, &rsCustSaleMaster, &rsCustTranManage,
          &rsSaleProductLists, &rsSaleProductListsManager, &rsCompanyMaster}) {
        if (*recordset && (*recordset)->isOpen())
            (*recordset)->Close();
        recordset->reset();
    }
}

void SaleSession::readAnewOnConflict(const std::function<void()> &work)
{
    try {
        work();
    } catch (const runtime::RuntimeError &error) {
        if (error.number() == runtime::ErrorNumber::Conflict)
            emit changedElsewhere();
        throw;
    }
}
