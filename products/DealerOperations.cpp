#include "products/DealerOperations.h"

#include "data/clsSQL.h"
#include "platform/runtime/Conversions.h"
#include "session/modGlobalVars.h"

DealerOperations::DealerOperations(SaleSession &session)
    : session_(session)
{
}

SaveOutcome DealerOperations::add(const DealerEdit &edit)
{
    return save(edit, true);
}

SaveOutcome DealerOperations::change(const DealerEdit &edit)
{
    return save(edit, false);
}

SaveOutcome DealerOperations::save(const DealerEdit &edit, bool isNew)
{
    if (edit.name.isEmpty())
        return SaveOutcome::Refused;
    if (!session_.rsCompanyMaster)
        return SaveOutcome::Failed;
    ado::Recordset &dealers = *session_.rsCompanyMaster;
    return saveTrapped(dealers, [&] {
        if (isNew)
            dealers.AddNew();
        dealers.setValue(QStringLiteral("CM_Name"), edit.name);
        dealers.setValue(QStringLiteral("CM_RegNum"), edit.regNum);
        dealers.setValue(QStringLiteral("CM_Address"), edit.address);
        dealers.setValue(QStringLiteral("CM_Tel"), edit.tel);
        dealers.setValue(QStringLiteral("CM_EtcMemo"), edit.memo);
        dealers.setValue(QStringLiteral("CM_IsValid"), !edit.noDealings);
        dealers.Update();
        return SaveOutcome::Saved;
    });
}

DealerOperations::Deletion DealerOperations::deleteCurrent()
{
    ado::Recordset &dealers = *session_.rsCompanyMaster;
    const std::int32_t lngCMPK = runtime::CLng(dealers[QStringLiteral("CM_PK")]);
    const std::int16_t used =
        countOf(gcnnMasterDB, clsSQL().getNumOfUsedCmpnySQL(lngCMPK), QStringLiteral("CMPNYCOUNT"), -1);
    if (used != 0)
        return used > 0 ? Deletion::InUse : Deletion::Unknown;
    dealers.Delete();
    return Deletion::Deleted;
}
