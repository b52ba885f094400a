#include "products/IncomingOperations.h"

#include "data/clsSQL.h"
#include "input/clsNumberRelated.h"
#include "platform/runtime/Conversions.h"
#include "session/modGlobalVars.h"

IncomingOperations::IncomingOperations(SaleSession &session)
    : session_(session)
{
}

SaveOutcome IncomingOperations::add(std::int32_t lngPMPK, const IncomingEdit &edit)
{
    return save(lngPMPK, edit, true);
}

SaveOutcome IncomingOperations::change(std::int32_t lngPMPK, const IncomingEdit &edit)
{
    return save(lngPMPK, edit, false);
}

SaveOutcome IncomingOperations::save(std::int32_t lngPMPK, const IncomingEdit &edit, bool isNew)
{
    if (edit.companyTag.trimmed().isEmpty())
        return SaveOutcome::Refused;
    const auto pure = [](const QString &typed) { return clsNumberRelated().GetPureNumber(typed.trimmed()); };
    ado::Recordset &incoming = *session_.rsProductIncoming;
    gcnnMasterDB->BeginTrans();
    if (isNew)
        incoming.AddNew();
    incoming.setValue(QStringLiteral("PM_PK"), lngPMPK);
    incoming.setValue(QStringLiteral("CM_PK"), runtime::Val(edit.companyTag.trimmed()));
    incoming.setValue(QStringLiteral("IN_Count"), runtime::Val(edit.count));
    incoming.setValue(QStringLiteral("IN_UnitPrice"), pure(edit.unitPrice));
    incoming.setValue(QStringLiteral("IN_HalinTotal"), pure(edit.halinTotal));
    incoming.setValue(QStringLiteral("IN_Total"), pure(edit.total));
    incoming.setValue(QStringLiteral("IN_EtcMemo"), edit.memo);
    incoming.setValue(QStringLiteral("IN_Date"), edit.date);
    incoming.Update();
    gcnnMasterDB->CommitTrans();
    return SaveOutcome::Saved;
}

QString getCompanyName(std::int32_t lngCMPK)
{
    ado::Recordset dealer;
    dealer.Open(clsSQL().getCmpnyNameSQL(lngCMPK), gcnnMasterDB, ado::CursorType::Static, ado::LockType::ReadOnly);
    return dealer.hasCurrent() ? runtime::text(dealer[QStringLiteral("CM_Name")]) : QString();
}
