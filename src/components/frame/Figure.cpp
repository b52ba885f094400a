#include "components/frame/Figure.h"

#include "platform/ado/ColumnValue.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/RuntimeError.h"

#include <utility>

namespace statistics {

Sum Record::amount(int column) const
{
    using runtime::ErrorNumber;
    const Cell &cell = rows_.cell(row_, column);
    if (cell.kind == Kind::Null)
        return {};
    if (isPlainNumber(cell, column))
        return runtime::Currency::fromWon(cell.integer);
    try {
        return isPlain(cell, column) ? ado::moneyOf(rows_, cell) : runtime::CCur(rows_.value(row_, column));
    } catch (const runtime::RuntimeError &error) {
        // One cell that is none leaves the others right. Whatever else fails, a lost server above all, ends the reading.
        if (error.number() != ErrorNumber::TypeMismatch && error.number() != ErrorNumber::Overflow)
            throw;
        return Sum::unknown();
    }
}

bool Record::isPlain(const Cell &cell, int column) const
{
    const ado::ResultColumn &description = rows_.columns()[std::size_t(column)];
    if (!description.registered)
        return cell.kind != Kind::Text || description.numeric;
    return description.registered->type == ado::ColumnType::Money;
}

bool Record::isPlainText(const Cell &cell, int column) const
{
    const ado::ResultColumn &description = rows_.columns()[std::size_t(column)];
    return cell.kind == Kind::Text
           && (description.registered ? description.registered->type == ado::ColumnType::Text : !description.numeric);
}

int Record::otherKey(int column) const
{
    const Cell &cell = rows_.cell(row_, column);
    if (cell.kind == Kind::Null)
        return 0;
    return cell.kind == Kind::Integer && isPlain(cell, column) ? runtime::toLong(cell.integer)
                                                               : runtime::CLng(rows_.value(row_, column));
}

QDate Record::date(int column) const
{
    const QVariant value = rows_.value(row_, column);
    if (value.metaType() == QMetaType::fromType<QDate>())
        return value.toDate();
    return QDate::fromString(runtime::text(value).left(10), Qt::ISODate); // the greatest of dates comes as a text
}

QString Record::text(int column) const
{
    const Cell &cell = rows_.cell(row_, column);
    return isPlainText(cell, column) ? QString::fromUtf8(rows_.text(cell)) : runtime::text(rows_.value(row_, column));
}

QUtf8StringView Record::utf8(int column, QByteArray &room) const
{
    const Cell &cell = rows_.cell(row_, column);
    if (isPlainText(cell, column))
        return QUtf8StringView(rows_.text(cell));
    room = text(column).toUtf8();
    return QUtf8StringView(room);
}

bool Record::isNull(int column) const
{
    return rows_.cell(row_, column).kind == Kind::Null;
}

bool Record::otherFlag(int column) const
{
    return runtime::isTrue(rows_.value(row_, column));
}

QString keyBounds(const char *key, const char *table)
{
    // Each by itself: the embedded engine looks at an index's end for one, but goes through all of it for both.
    return QStringLiteral("SELECT (SELECT MIN(%1) FROM %2) AS Lowest, (SELECT MAX(%1) FROM %2) AS Highest")
        .arg(QLatin1String(key), QLatin1String(table));
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
