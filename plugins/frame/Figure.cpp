#include "plugins/frame/Figure.h"

#include "platform/runtime/Conversions.h"

namespace statistics {

runtime::Currency Record::amount(int column) const
{
    const QVariant value = rows_.valueAt(row_, column);
    return runtime::isNull(value) ? runtime::Currency() : runtime::CCur(value);
}

int Record::key(int column) const
{
    const QVariant value = rows_.valueAt(row_, column);
    return runtime::isNull(value) ? 0 : runtime::CLng(value);
}

QDate Record::date(int column) const
{
    const QVariant value = rows_.valueAt(row_, column);
    if (value.metaType() == QMetaType::fromType<QDate>())
        return value.toDate();
    return QDate::fromString(runtime::text(value).left(10), Qt::ISODate); // the greatest of dates comes as a text
}

QString Record::text(int column) const
{
    return runtime::text(rows_.valueAt(row_, column));
}

bool Record::isNull(int column) const
{
    return runtime::isNull(rows_.valueAt(row_, column));
}

bool Record::flag(int column) const
{
    return runtime::isTrue(rows_.valueAt(row_, column));
}

QString orderBounds()
{
    // The number of orders keeps a server from looking for the lowest key from key 1 on.
    return QStringLiteral("SELECT MIN(OrdM_PK) AS Lowest, MAX(OrdM_PK) AS Highest, COUNT(*) AS Orders FROM tPSOrderMaster "
                          "WHERE OrdM_Date BETWEEN '[FIRST]' AND '[LAST]'");
}

QString linesOfOrders(const QString &joined)
{
    return QStringLiteral("tPSOrderMaster INNER JOIN tPSOrderDetail ON tPSOrderMaster.OrdM_PK = tPSOrderDetail.OrdM_PK ")
        + joined
        + QStringLiteral("WHERE tPSOrderMaster.OrdM_Date BETWEEN '[FIRST]' AND '[LAST]' "
                         "AND tPSOrderMaster.OrdM_PK BETWEEN [FROM] AND [TO] AND tPSOrderDetail.OrdM_PK BETWEEN [FROM] AND [TO] ");
}

} // namespace statistics
