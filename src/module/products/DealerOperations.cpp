#include "products/DealerOperations.h"

#include "data/HeldOrder.h"
#include "data/clsSQL.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/Operation.h"
#include "products/GoneRow.h"
#include "session/modGlobalVars.h"

DealerOperations::DealerOperations(SaleSession &session)
    : session_(session)
{
}

SaveOutcome DealerOperations::add(const DealerEdit &edit)
{
    return save({}, edit);
}

SaveOutcome DealerOperations::change(DealerKey dealer, const DealerEdit &edit)
{
    return dealer ? save(dealer, edit) : SaveOutcome::Failed;
}

SaveOutcome DealerOperations::save(DealerKey dealer, const DealerEdit &edit)
{
    const runtime::Operation operation("save dealer", {{"dealer", dealer.number()}});
    if (edit.name.isEmpty())
        return SaveOutcome::Refused;
    if (!session_.rsCompanyMaster)
        return SaveOutcome::Failed;
    ado::Recordset &dealers = *session_.rsCompanyMaster;
    return saveTrapped(dealers, [&] {
        if (!dealer)
            dealers.AddNew();
        else if (!dealers.moveToKey(dealer.bookmark()))
            ado::raiseConflict();
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

DealerOperations::Deletion DealerOperations::remove(DealerKey dealer)
{
    const runtime::Operation operation("delete dealer", {{"dealer", dealer.number()}});
    ado::Transaction transaction(*gcnnMasterDB);
    // Held while its purchases are counted: another desk could save one before it is deleted.
    if (!dealerIsHeld(*gcnnMasterDB, dealer))
        ado::raiseConflict();
    const qint16 used =
        countOf(gcnnMasterDB, clsSQL().getNumOfUsedCmpnySQL(dealer.number()), QStringLiteral("CMPNYCOUNT"), -1);
    if (used != 0)
        return used > 0 ? Deletion::InUse : Deletion::Unknown;
    ado::Recordset &dealers = *session_.rsCompanyMaster;
    if (!dealers.moveToKey(dealer.bookmark()))
        ado::raiseConflict();
    dealers.Delete();
    transaction.commit();
    return Deletion::Deleted;
}
