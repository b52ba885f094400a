#include "components/frame/Figure.h"

#include "platform/runtime/Conversions.h"
#include "platform/runtime/RuntimeError.h"

namespace statistics {

Sum Record::amount(int column) const
{
    using runtime::ErrorNumber;
    try {
        const QVariant value = rows_.valueAt(row_, column);
        return runtime::isNull(value) ? Sum() : Sum(runtime::CCur(value));
    } catch (const runtime::RuntimeError &error) {
        // One cell that is none leaves the others right. Whatever else fails, a lost server above all, ends the reading.
        if (error.number() != ErrorNumber::TypeMismatch && error.number() != ErrorNumber::Overflow)
            throw;
        return Sum::unknown();
    }
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
    return QStringLiteral(
        "SELECT MIN(OrdM_PK) AS Lowest, MAX(OrdM_PK) AS Highest, COUNT(*) AS Orders FROM tPSOrderMaster "
        "WHERE OrdM_Date BETWEEN '[FIRST]' AND '[LAST]'");
}

QString linesOfOrders(const QString &joined)
{
    return QStringLiteral(
               "tPSOrderMaster INNER JOIN tPSOrderDetail ON tPSOrderMaster.OrdM_PK = tPSOrderDetail.OrdM_PK ")
           + joined
           + QStringLiteral("WHERE tPSOrderMaster.OrdM_Date BETWEEN '[FIRST]' AND '[LAST]' "
                            "AND tPSOrderMaster.OrdM_PK BETWEEN [FROM] AND [TO] AND tPSOrderDetail.OrdM_PK BETWEEN "
                            "[FROM] AND [TO] ");
}

} // namespace statistics
