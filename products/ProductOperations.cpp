#include "products/ProductOperations.h"

#include "data/clsSQL.h"
#include "input/clsNumberRelated.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "session/modGlobalVars.h"

#include <algorithm>

namespace {

bool lacksName(const ProductEdit &edit)
{
    return edit.catagory.trimmed().isEmpty() || edit.name.trimmed().isEmpty();
}

} // namespace

ProductOperations::ProductOperations(SaleSession &session)
    : session_(session)
{
}

SaveOutcome ProductOperations::add(const ProductEdit &edit)
{
    ado::Recordset &products = *session_.rsSaleProductListsManager;
    return saveTrapped(products, [&] {
        products.AddNew();
        if (lacksName(edit))
            return SaveOutcome::Refused;
        assign(edit);
        products.setValue(QStringLiteral("PM_UnitPrice"), clsNumberRelated().GetPureNumber(edit.unitPrice));
        products.Update();
        return SaveOutcome::Saved;
    });
}

void ProductOperations::beginChange()
{
    seen_.clear();
    const ado::Recordset &products = *session_.rsSaleProductListsManager;
    for (const QString &field : products.fieldNames())
        seen_[field] = products[field];
}

SaveOutcome ProductOperations::change(const ProductEdit &edit)
{
    if (lacksName(edit))
        return SaveOutcome::Refused;
    ado::Recordset &products = *session_.rsSaleProductListsManager;
    return saveTrapped(products, [&] {
        if (!findSeen())
            throw runtime::RuntimeError(runtime::ErrorNumber::Conflict,
                                        QStringLiteral("고치던 물품이 바뀌었거나 목록에 없습니다."));
        assign(edit);
        const QString price = QStringLiteral("PM_UnitPrice");
        // A product without a price shows an empty box; saved unchanged it does not come to cost nothing.
        if (!edit.unitPrice.isEmpty() || !runtime::isNull(products[price]))
            products.setValue(price, clsNumberRelated().GetPureNumber(edit.unitPrice));
        products.Update();
        return SaveOutcome::Saved;
    });
}

bool ProductOperations::isSeen() const
{
    const ado::Recordset &products = *session_.rsSaleProductListsManager;
    return products.hasCurrent() && std::all_of(seen_.begin(), seen_.end(), [&](const auto &field) {
               return products[field.first] == field.second;
           });
}

bool ProductOperations::findSeen()
{
    if (isSeen())
        return true;
    session_.rsSaleProductListsManager->setBookmark(seen_[QStringLiteral("PM_PK")]);
    return isSeen();
}

void ProductOperations::assign(const ProductEdit &edit)
{
    ado::Recordset &products = *session_.rsSaleProductListsManager;
    products.setValue(QStringLiteral("PM_Catagory"), edit.catagory.trimmed());
    products.setValue(QStringLiteral("PM_Name"), edit.name.trimmed());
    products.setValue(QStringLiteral("PM_IsTaxed"), int(edit.taxed));
    products.setValue(QStringLiteral("PM_IsValid"), int(edit.valid));
    products.setValue(QStringLiteral("PM_EtcMemo"), edit.memo.trimmed());
    products.setValue(QStringLiteral("PM_AddedDate"), edit.addedDate);
}

ProductOperations::Deletion ProductOperations::deleteCurrent()
{
    ado::Recordset &products = *session_.rsSaleProductListsManager;
    const std::int32_t lngPMPK = runtime::CLng(products[QStringLiteral("PM_PK")]);
    if (CountNoOfProductUsed(gcnnMasterDB, lngPMPK) >= 1)
        return Deletion::Sold;
    gcnnMasterDB->BeginTrans();
    try {
        gcnnMasterDB->Execute(clsSQL().delAProductSQL(lngPMPK));
        gcnnMasterDB->CommitTrans();
    } catch (const runtime::RuntimeError &) {
        runtime::Attempt undo;
        undo([] { gcnnMasterDB->RollbackTrans(); });
        throw;
    }
    products.Requery();
    if (session_.rsSaleProductLists && session_.rsSaleProductLists->isOpen())
        session_.rsSaleProductLists->Requery();
    return Deletion::Deleted;
}

std::int16_t countSameExistProductName(const ado::ConnectionPtr &connection, const QString &strPMName)
{
    return countOf(connection, clsSQL().getNumOfSameProdName(strPMName), QStringLiteral("NAMECOUNT"), 0);
}

std::int16_t CountNoOfProductUsed(const ado::ConnectionPtr &connection, std::int32_t lngPMPK)
{
    return countOf(connection, clsSQL().getNumOfUsedProdSQL(lngPMPK), QStringLiteral("NUMOFPRO"), 0);
}
