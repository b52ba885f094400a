#include "sales/ProductNames.h"

#include "platform/ado/Recordset.h"
#include "platform/runtime/Conversions.h"
#include "session/modGlobalVars.h"

QString ProductNames::name(qint32 lngPMPK)
{
    if (const auto known = names_.constFind(lngPMPK); known != names_.constEnd())
        return *known;
    ado::Recordset product;
    product.Open(QStringLiteral("SELECT PM_Catagory, PM_Name FROM tPSProductMaster WHERE PM_PK = ")
                     + QString::number(lngPMPK),
                 gcnnMasterDB, ado::CursorType::ForwardOnly, ado::LockType::ReadOnly);
    const QString name = product.Eof() ? QString() : runtime::text(product[QStringLiteral("PM_Name")]);
    names_.insert(lngPMPK, name);
    return name;
}
