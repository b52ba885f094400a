#include "sales/ProductNames.h"

#include "platform/ado/CellTable.h"
#include "platform/ado/Foresight.h"
#include "platform/ado/OneMoment.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "session/modGlobalVars.h"

namespace {

QString lookUp(qint32 lngPMPK)
{
    return QStringLiteral("SELECT PM_Catagory, PM_Name FROM tPSProductMaster WHERE PM_PK = ")
           + QString::number(lngPMPK);
}

} // namespace

QString ProductNames::name(qint32 lngPMPK)
{
    if (const auto known = names_.constFind(lngPMPK); known != names_.constEnd())
        return *known;
    // Asked once a row while a grid paints: a recordset of one row would take longer than the engine.
    const ado::CellTable product = gcnnMasterDB->read(lookUp(lngPMPK));
    const QString name = product.rowCount() == 0 ? QString() : runtime::text(product.value(0, 1));
    names_.insert(lngPMPK, name);
    return name;
}

void ProductNames::tell(ado::Foresight &next, const QList<qint32> &keys)
{
    for (const qint32 key : keys)
        next.read(lookUp(key));
}

void ProductNames::readTogether(const std::function<QList<qint32>()> &keys)
{
    const ado::OneMoment moment(gcnnMasterDB);
    ado::Foresight next(gcnnMasterDB);
    if (!next.isOfUse() && !moment.isHeld())
        return;
    const QList<qint32> asked = keys();
    for (const qint32 key : asked) {
        if (next.isOfUse() && !names_.contains(key))
            next.read(lookUp(key));
    }
    runtime::Attempt attempt; // the grid says of which row it cannot be read
    for (auto key = asked.begin(); key != asked.end() && !attempt.failed(); ++key)
        attempt([&] { name(*key); });
}
