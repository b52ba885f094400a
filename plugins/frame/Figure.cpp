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

bool Record::flag(int column) const
{
    return runtime::isTrue(rows_.valueAt(row_, column));
}

} // namespace statistics
