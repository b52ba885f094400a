#include "desk/rows/ExactValue.h"

#include "platform/runtime/Currency.h"
#include "platform/runtime/RuntimeError.h"

#include <QDate>
#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace rows {

namespace {

using runtime::Currency;

[[noreturn]] void misfit(const QString &why, const QVariant &raw)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::TypeMismatch,
                                QStringLiteral("%1: %2").arg(why, raw.toString().left(40)));
}

/// The places behind the point that say something.
qsizetype decimalsOf(const QString &number)
{
    const qsizetype point = number.indexOf(u'.');
    qsizetype last = number.size();
    while (point >= 0 && number[last - 1] == u'0')
        --last;
    return point < 0 ? 0 : last - point - 1;
}

Currency money(const QVariant &raw)
{
    constexpr int kept = 4;
    const QString why = QStringLiteral("금액이 아니거나 소수점 아래가 너무 깁니다");
    if (raw.typeId() == QMetaType::LongLong)
        return Currency::fromWon(raw.toLongLong());
    if (raw.typeId() == QMetaType::Double) {
        const Currency rounded = Currency::fromDouble(raw.toDouble());
        if (rounded.toDouble() != raw.toDouble())
            misfit(why, raw);
        return rounded;
    }
    const QString text = raw.toString();
    const std::optional<Currency> exact = Currency::fromPlainText(text.toLatin1());
    if (!exact || decimalsOf(text) > kept)
        misfit(why, raw);
    return *exact;
}

qlonglong whole(const QVariant &raw, qlonglong least, qlonglong most)
{
    // A column of decimals holds whole numbers, too.
    const Currency number = money(raw);
    if (number.scaled() % Currency::Scale != 0)
        misfit(QStringLiteral("정수가 아닙니다"), raw);
    const qlonglong value = number.scaled() / Currency::Scale;
    if (value < least || value > most)
        misfit(QStringLiteral("숫자가 너무 큽니다"), raw);
    return value;
}

qlonglong flag(const QVariant &raw)
{
    const QString text = raw.toString();
    if (text == QLatin1String("t") || text == QLatin1String("f")) // a server's boolean
        return text == QLatin1String("t");
    return money(raw).isZero() ? 0 : 1;
}

double number(const QVariant &raw)
{
    bool told = false;
    const double value = raw.toDouble(&told);
    if (!told || !std::isfinite(value))
        misfit(QStringLiteral("숫자가 아닙니다"), raw);
    return value + 0.0; // one engine knows no negative zero
}

/// An engine may add a time of day, which the system's dates do not have.
QString date(const QVariant &raw)
{
    static const QRegularExpression day(QStringLiteral("^(\\d{4}-\\d{2}-\\d{2})([ T]00:00(:00(\\.0+)?)?)?$"));
    const QRegularExpressionMatch match = day.match(raw.toString());
    if (!QDate::fromString(match.captured(1), Qt::ISODate).isValid())
        misfit(QStringLiteral("저장할 수 없는 날짜입니다"), raw);
    return match.captured(1);
}

QString text(const QVariant &raw)
{
    const QString value = raw.toString();
    if (value.contains(QChar(u'\0')))
        misfit(QStringLiteral("저장할 수 없는 문자가 있습니다"), QString(value).remove(QChar(u'\0')));
    return value;
}

} // namespace

QVariant exactValue(const QVariant &raw, schema::Holds holds)
{
    using Limits = std::numeric_limits<qint32>;
    using Short = std::numeric_limits<qint16>;
    if (!raw.isValid())
        return {};
    switch (holds) {
    case schema::Holds::Key:
    case schema::Holds::Long:
        return whole(raw, Limits::min(), Limits::max());
    case schema::Holds::Integer:
        return whole(raw, Short::min(), Short::max());
    case schema::Holds::Flag:
        return flag(raw);
    case schema::Holds::Money:
        return QVariant::fromValue(money(raw));
    case schema::Holds::Number:
        return number(raw);
    case schema::Holds::Date:
        return date(raw);
    case schema::Holds::Text:
        return text(raw);
    }
    Q_UNREACHABLE();
}

void demandFit(const QVariant &exact, ado::Engine engine)
{
    if (engine != ado::Engine::SQLite || exact.metaType() != QMetaType::fromType<Currency>())
        return;
    const auto amount = exact.value<Currency>();
    if (amount.scaled() % Currency::Scale != 0)
        misfit(QStringLiteral("SQLite에는 원 단위 금액만 저장할 수 있습니다"), amount.toText());
}

QByteArray plainText(const QVariant &exact)
{
    if (exact.metaType() == QMetaType::fromType<Currency>())
        return QByteArray::number(qlonglong(exact.value<Currency>().scaled()));
    if (exact.typeId() == QMetaType::Double)
        return QByteArray::number(exact.toDouble(), 'g', 17);
    return exact.toString().toUtf8();
}

} // namespace rows
