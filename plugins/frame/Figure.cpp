#include "plugins/frame/Figure.h"

#include "platform/runtime/Conversions.h"

namespace statistics {

runtime::Currency amountOf(const ado::Recordset &row, const QString &field)
{
    const QVariant value = row[field];
    return runtime::isNull(value) ? runtime::Currency() : runtime::CCur(value);
}

int keyOf(const ado::Recordset &row, const QString &field)
{
    const QVariant value = row[field];
    return runtime::isNull(value) ? 0 : runtime::CLng(value);
}

QDate dateOf(const ado::Recordset &row, const QString &field)
{
    const QVariant value = row[field];
    if (value.metaType() == QMetaType::fromType<QDate>())
        return value.toDate();
    return QDate::fromString(runtime::text(value).left(10), Qt::ISODate); // the greatest of dates comes as a text
}

QString textOf(const ado::Recordset &row, const QString &field)
{
    return runtime::text(row[field]);
}

} // namespace statistics
