#include "platform/runtime/Conversions.h"

#include "platform/runtime/Format.h"
#include "platform/runtime/NumberText.h"
#include "platform/runtime/RuntimeError.h"

#include <cmath>
#include <limits>

namespace runtime {

namespace {

[[noreturn]] void raiseOverflow()
{
    throw RuntimeError(ErrorNumber::Overflow, QStringLiteral("숫자가 너무 큽니다."));
}

[[noreturn]] void raiseMismatch(const QVariant &value)
{
    throw RuntimeError(ErrorNumber::TypeMismatch,
                       QStringLiteral("숫자나 날짜로 입력하십시오: %1").arg(value.toString()));
}

void refuseNull(const QVariant &value)
{
    if (isNull(value))
        throw RuntimeError(ErrorNumber::InvalidUseOfNull, QStringLiteral("값이 비어 있습니다."));
}

bool isWhole(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return true;
    default:
        return false;
    }
}

std::int64_t whole(const QVariant &value)
{
    if (value.typeId() == QMetaType::ULongLong
        && value.toULongLong() > quint64(std::numeric_limits<std::int64_t>::max()))
        raiseOverflow();
    // A flag counts as -1, as it does on the desktop that these rules come from.
    return value.typeId() == QMetaType::Bool ? (value.toBool() ? -1 : 0) : value.toLongLong();
}

bool isCurrency(const QVariant &value)
{
    return value.metaType() == QMetaType::fromType<Currency>();
}

/// A floating-point text with so many significant digits: plain up to there, then with an exponent of two digits.
QString significant(double value, int digits)
{
    if (value == 0)
        return QStringLiteral("0");
    QString text = QString::number(value, 'g', digits);
    const qsizetype mark = text.indexOf(QLatin1Char('e'));
    return mark < 0 ? text : text.left(mark) + QLatin1Char('E') + text.mid(mark + 1);
}

std::int64_t roundedWhole(const QVariant &value)
{
    refuseNull(value);
    if (isWhole(value))
        return whole(value);
    if (isCurrency(value))
        return value.value<Currency>().toWon();
    const double rounded = std::nearbyint(CDbl(value)); // the default rounding mode is half to even
    if (!(std::abs(rounded) < 9.2e18))
        raiseOverflow();
    return static_cast<std::int64_t>(rounded);
}

} // namespace

bool isNull(const QVariant &value)
{
    return !value.isValid() || value.isNull();
}

bool isTrue(const QVariant &value)
{
    if (isNull(value))
        return false;
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    return CDbl(value) != 0;
}

QString text(const QVariant &value)
{
    if (isNull(value))
        return QStringLiteral("");
    if (isCurrency(value))
        return value.value<Currency>().toText();
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case QMetaType::Double:
        return text(value.toDouble());
    case QMetaType::Float:
        return text(value.toFloat());
    case QMetaType::QDate:
        return dateText(value.toDate());
    case QMetaType::QDateTime:
        return dateTimeText(value.toDateTime());
    default:
        return value.toString();
    }
}

QString text(float value)
{
    return significant(value, 7);
}

QString text(double value)
{
    return significant(value, 15);
}

QString Trim(const QString &text)
{
    constexpr QChar blank(u' ');
    qsizetype first = 0;
    qsizetype end = text.size();
    while (first < end && text.at(first) == blank)
        ++first;
    while (end > first && text.at(end - 1) == blank)
        --end;
    return text.mid(first, end - first);
}

double Val(const QString &text)
{
    const double number = numericPrefix(text).toDouble();
    if (std::isinf(number))
        raiseOverflow();
    return number;
}

double Val(const QVariant &value)
{
    return Val(text(value));
}

bool IsNumeric(const QString &text)
{
    return plainNumber(text).has_value();
}

Currency CCur(const QVariant &value)
{
    refuseNull(value);
    if (isCurrency(value))
        return value.value<Currency>();
    if (isWhole(value))
        return Currency::fromWon(whole(value));
    if (value.typeId() != QMetaType::QString)
        return Currency::fromDouble(CDbl(value));
    const std::optional<QString> number = plainNumber(value.toString());
    if (!number)
        raiseMismatch(value);
    const std::optional<Currency> exact = Currency::fromPlainText(number->toLatin1());
    return exact ? *exact : Currency::fromDouble(number->toDouble()); // an exponent is the one form left
}

double CDbl(const QVariant &value)
{
    refuseNull(value);
    if (isWhole(value))
        return static_cast<double>(whole(value));
    if (isCurrency(value))
        return value.value<Currency>().toDouble();
    if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float)
        return value.toDouble();
    const std::optional<QString> number = plainNumber(text(value));
    if (!number)
        raiseMismatch(value);
    const double result = number->toDouble();
    if (std::isinf(result))
        raiseOverflow();
    return result;
}

qint32 CLng(const QVariant &value)
{
    return toLong(roundedWhole(value));
}

qint16 CInt(const QVariant &value)
{
    return toInteger(roundedWhole(value));
}

qint32 toLong(std::int64_t value)
{
    if (value < std::numeric_limits<qint32>::min() || value > std::numeric_limits<qint32>::max())
        raiseOverflow();
    return static_cast<qint32>(value);
}

qint16 toInteger(std::int64_t value)
{
    if (value < std::numeric_limits<qint16>::min() || value > std::numeric_limits<qint16>::max())
        raiseOverflow();
    return static_cast<qint16>(value);
}

} // namespace runtime
