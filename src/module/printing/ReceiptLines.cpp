#include "printing/ReceiptLines.h"

#include "data/Codes.h"
#include "data/clsSQL.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/RuntimeError.h"

namespace receipt {

namespace {

/// The number 0 written before the column's text, so that NULL gives 0. A negative number makes "0-5", which is no number:
/// that is how a receipt refuses it.
QVariant withLeadingZero(const ado::Recordset &row, const QString &field, const QString &caption)
{
    const QString digits = runtime::text(row[field]);
    if (digits.startsWith(QLatin1Char('-')))
        throw runtime::RuntimeError(runtime::ErrorNumber::TypeMismatch,
                                    QStringLiteral("음수는 출력할 수 없습니다. (%1: %2)").arg(caption, digits));
    return QLatin1Char('0') + digits;
}

QVariant numberOf(const ado::Recordset &row, const QString &field, const QString &caption, Numbers numbers)
{
    if (numbers == Numbers::LeadingZero)
        return withLeadingZero(row, field, caption);
    const QVariant value = row[field];
    return runtime::isNull(value) ? QVariant(0) : value;
}

QString kindOf(const QVariant &orderType, qint16 intCount)
{
    const qint32 type = runtime::isNull(orderType) ? sale::NormalSale : runtime::CLng(orderType);
    if (type == sale::NormalSale)
        return intCount >= 0 ? sale::lineTypeText(sale::NormalSale) : QStringLiteral("반품");
    return type == sale::Service ? sale::lineTypeText(sale::Service) : QString();
}

Line lineOf(const ado::Recordset &row, Numbers numbers, qint16 intItem)
{
    Line line;
    line.intItem = intItem;
    line.name = runtime::text(row[QStringLiteral("PM_Name")]);
    line.category = runtime::text(row[QStringLiteral("PM_Catagory")]);
    line.curUnit = runtime::CCur(numberOf(row, QStringLiteral("OrdD_UnitPrice"), QStringLiteral("단가"), numbers));
    line.curDisc = runtime::CCur(numberOf(row, QStringLiteral("OrdD_HalinUnit"), QStringLiteral("할인"), numbers));
    line.intCount = runtime::CInt(numberOf(row, QStringLiteral("OrdD_Count"), QStringLiteral("수량"), numbers));
    line.kind = kindOf(row[QStringLiteral("OrdD_OrderType")], line.intCount);
    line.taxed = runtime::isTrue(row[QStringLiteral("PM_IsTaxed")]);
    if (line.taxed)
        line.category.prepend(QLatin1Char('*'));
    return line;
}

} // namespace

QString Line::number() const
{
    return QString::number(intItem).rightJustified(3, QLatin1Char('0'));
}

void Sums::add(const Line &line)
{
    (line.taxed ? curTaxed : curFree) += line.amount();
    // Quirk (docs/architecture.md): once a line, not times its count.
    curHalinSum += line.curDisc;
}

void readLines(const ado::ConnectionPtr &connection, qint32 lngOrdMPK, Numbers numbers, qint16 &intItem,
               const std::function<void(const Line &)> &print)
{
    ado::Recordset details;
    details.Open(clsSQL().getOrderDetailWithNameSQL(lngOrdMPK), connection, ado::CursorType::Static,
                 ado::LockType::ReadOnly);
    for (; !details.Eof(); details.MoveNext()) {
        print(lineOf(details, numbers, intItem));
        intItem = runtime::toInteger(intItem + 1);
    }
}

LedgerTotals readTotals(const ado::ConnectionPtr &connection, const QString &statement)
{
    struct Column
    {
        const char16_t *name;
        runtime::Currency LedgerTotals::*total;
    };
    constexpr Column columns[] = {
        {u"수납토탈", &LedgerTotals::curSunap},  {u"현금토탈", &LedgerTotals::curCash},
        {u"카드토탈", &LedgerTotals::curCard},   {u"할인토탈", &LedgerTotals::curHalin},
        {u"절사토탈", &LedgerTotals::curJeolsa}, {u"환불토탈", &LedgerTotals::curRefund},
    };
    LedgerTotals totals;
    ado::Recordset row;
    row.Open(statement, connection, ado::CursorType::Static, ado::LockType::ReadOnly);
    if (!row.hasCurrent())
        return totals;
    for (const Column &column : columns) {
        const QString name = QString::fromUtf16(column.name);
        totals.*column.total = runtime::CCur(withLeadingZero(row, name, name));
    }
    return totals;
}

runtime::Currency readReceived(const ado::ConnectionPtr &connection, qint32 lngOrdMPK)
{
    ado::Recordset row;
    row.Open(clsSQL().getTranAllEachTotalByOrdMPKSQL(lngOrdMPK), connection, ado::CursorType::Static,
             ado::LockType::ReadOnly);
    const QString name = QStringLiteral("수납토탈");
    return row.hasCurrent() ? runtime::CCur(withLeadingZero(row, name, name)) : runtime::Currency();
}

QString money(runtime::Currency amount)
{
    return runtime::Format(QVariant::fromValue(amount), QStringLiteral("#,###,##0"));
}

} // namespace receipt
