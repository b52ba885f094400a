#include "products/ProductOperations.h"

#include "data/HeldOrder.h"
#include "data/clsSQL.h"
#include "forms/clsNumberRelated.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Operation.h"
#include "products/GoneRow.h"
#include "session/modGlobalVars.h"

#include <QPointer>

#include <algorithm>

namespace {

constexpr const char *savedColumns[] = {"PM_Catagory",  "PM_Name",    "PM_IsTaxed",  "PM_IsValid",
                                        "PM_UnitPrice", "PM_EtcMemo", "PM_AddedDate"};

bool lacksName(const ProductEdit &edit)
{
    return runtime::Trim(edit.catagory).isEmpty() || runtime::Trim(edit.name).isEmpty();
}

} // namespace

ProductOperations::ProductOperations(SaleSession &session)
    : session_(session)
{
}

SaveOutcome ProductOperations::add(const ProductEdit &edit)
{
    const runtime::Operation operation("add product");
    ado::Recordset &products = *session_.rsSaleProductListsManager;
    return saveTrapped(products, [&] {
        products.AddNew();
        if (lacksName(edit))
            return SaveOutcome::Refused;
        assign(edit, true);
        products.Update();
        return SaveOutcome::Saved;
    });
}

ProductKey ProductOperations::beginChange()
{
    seen_.clear();
    const ado::Recordset &products = *session_.rsSaleProductListsManager;
    for (const char *field : savedColumns)
        seen_[QLatin1String(field)] = products[QLatin1String(field)];
    return edited_ = ProductKey(products.bookmark());
}

SaveOutcome ProductOperations::change(const ProductEdit &edit)
{
    const runtime::Operation operation("save product", {{"product", edited_.number()}});
    if (lacksName(edit))
        return SaveOutcome::Refused;
    ado::Recordset &products = *session_.rsSaleProductListsManager;
    return saveTrapped(products, [&] {
        if (!findSeen())
            ado::raiseConflict();
        // A product without a price shows an empty box: saving that must not turn NULL into a price of 0.
        assign(edit, !edit.unitPrice.isEmpty() || !runtime::isNull(products[QStringLiteral("PM_UnitPrice")]));
        products.Update();
        return SaveOutcome::Saved;
    });
}

/// False when the product changed since the edit began; the list itself may have been read again meanwhile.
bool ProductOperations::findSeen()
{
    ado::Recordset &products = *session_.rsSaleProductListsManager;
    return products.moveToKey(edited_.bookmark()) && std::all_of(seen_.begin(), seen_.end(), [&](const auto &field) {
               return products[field.first] == field.second;
           });
}

void ProductOperations::assign(const ProductEdit &edit, bool withPrice)
{
    ado::Recordset &products = *session_.rsSaleProductListsManager;
    products.setValue(QStringLiteral("PM_Catagory"), runtime::Trim(edit.catagory));
    products.setValue(QStringLiteral("PM_Name"), runtime::Trim(edit.name));
    products.setValue(QStringLiteral("PM_IsTaxed"), int(edit.taxed));
    products.setValue(QStringLiteral("PM_IsValid"), int(edit.valid));
    if (withPrice)
        products.setValue(QStringLiteral("PM_UnitPrice"), clsNumberRelated().GetPureNumber(edit.unitPrice));
    products.setValue(QStringLiteral("PM_EtcMemo"), runtime::Trim(edit.memo));
    products.setValue(QStringLiteral("PM_AddedDate"), edit.addedDate);
}

ProductOperations::Deletion ProductOperations::remove(ProductKey product)
{
    const runtime::Operation operation("delete product", {{"product", product.number()}});
    ado::Transaction transaction(*gcnnMasterDB);
    // Held while it is counted: another desk could sell it before it is deleted.
    if (!productIsHeld(*gcnnMasterDB, product))
        return Deletion::Gone;
    if (CountNoOfProductUsed(gcnnMasterDB, product.number()) >= 1)
        return Deletion::Sold;
    const int touched = gcnnMasterDB->Execute(clsSQL().delAProductSQL(product.number()));
    transaction.commit();
    if (touched == 0)
        return Deletion::Gone;
    // A row that is shown may open a box, and the window may go beneath that.
    const QPointer<SaleSession> alive(&session_);
    runtime::Attempt show; // it is deleted, whatever becomes of the lists
    for (const SaleSession::RecordsetPtr *list : {&session_.rsSaleProductListsManager, &session_.rsSaleProductLists}) {
        if (alive && *list && (*list)->isOpen())
            show([&] { (*list)->Requery(); });
    }
    return Deletion::Deleted;
}

qint16 countSameExistProductName(const ado::ConnectionPtr &connection, const QString &strPMName)
{
    return countOf(connection, clsSQL().getNumOfSameProdName(strPMName), QStringLiteral("NAMECOUNT"), 0);
}

qint16 CountNoOfProductUsed(const ado::ConnectionPtr &connection, qint32 lngPMPK)
{
    return countOf(connection, clsSQL().getNumOfUsedProdSQL(lngPMPK), QStringLiteral("NUMOFPRO"), 0);
}
