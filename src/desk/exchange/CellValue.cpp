#include "desk/exchange/Subject.h"

#include "desk/schema/Statements.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/CsvText.h"
#include "platform/runtime/Currency.h"

#include <QDate>
#include <QRegularExpression>

namespace exchange {

namespace {

using runtime::Currency;

QVariant money(const QString &cell)
{
    // A comma anywhere else would be a decimal sign of other countries, or a slip.
    static const QRegularExpression amount(
        QStringLiteral("^(-?)\\s*[\\\\₩￦]?\\s*(-?)(\\d{1,3}(?:,\\d{3})+|\\d+)(?:\\.0+)?\\s*원?$"));
    const QRegularExpressionMatch match = amount.match(cell);
    const QString sign = match.captured(1) + match.captured(2);
    if (!match.hasMatch() || sign.size() > 1)
        schema::refuse(QStringLiteral("금액은 12000 또는 12,000처럼 입력하십시오"));
    const QString digits = match.captured(3).remove(u',');
    return QVariant::fromValue(Currency::fromPlainText((sign + digits).toLatin1()).value());
}

QVariant date(const QString &cell)
{
    if (cell == QStringLiteral("오늘"))
        return QDate::currentDate().toString(Qt::ISODate);
    static const QRegularExpression day(QStringLiteral(
        "^([1-9]\\d{3})(?:(?:\\s*[-./년]\\s*)(\\d{1,2})(?:\\s*[-./월]\\s*)(\\d{1,2})\\s*[.일]?|(\\d{2})(\\d{2}))"
        "(?: 0?0:00(?::00)?)?$"));
    const QRegularExpressionMatch match = day.match(cell);
    const bool packed = match.hasCaptured(4);
    const QDate read(match.captured(1).toInt(), match.captured(packed ? 4 : 2).toInt(),
                     match.captured(packed ? 5 : 3).toInt());
    if (!read.isValid())
        schema::refuse(QStringLiteral("날짜는 2024-01-05 또는 2024.1.5처럼 입력하십시오"));
    return read.toString(Qt::ISODate);
}

QVariant flag(const Field &field, const QString &cell)
{
    const QString yes = QString::fromUtf8(field.yes), no = QString::fromUtf8(field.no);
    const QString word = cell.toLower();
    if (word == yes || QStringList{"1", "예", "y", "yes", "true", "o"}.contains(word))
        return 1LL;
    if (word == no || QStringList{"0", "아니오", "n", "no", "false", "x"}.contains(word))
        return 0LL;
    schema::refuse(QStringLiteral("'%1' 또는 '%2' 중 하나를 입력하십시오").arg(yes, no));
}

} // namespace

QVariant valueOf(const Field &field, const QString &cell)
{
    const QString typed = runtime::Trim(runtime::fromSpreadsheetText(cell));
    if (typed.isEmpty())
        return {};
    switch (field.reads) {
    case Reads::Text:
    case Reads::Memo:
        return typed;
    case Reads::Money:
        return money(typed);
    case Reads::Date:
        return date(typed);
    case Reads::Flag:
        return flag(field, typed);
    }
    Q_UNREACHABLE();
}

QString cellOf(const Field &field, const QVariant &value)
{
    if (!value.isValid())
        return {};
    switch (field.reads) {
    case Reads::Money:
        return value.value<Currency>().toText();
    case Reads::Flag:
        return QString::fromUtf8(value.toLongLong() != 0 ? field.yes : field.no);
    default:
        return value.toString();
    }
}

} // namespace exchange
