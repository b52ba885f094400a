#include "platform/runtime/Format.h"

#include "platform/runtime/Conversions.h"
#include "platform/runtime/NumberText.h"

#include <QLocale>
#include <QStringList>

#include <cmath>
#include <optional>

namespace runtime {

namespace {

/// One section of a number pattern.
struct Section
{
    QString before;
    QString after;
    int leastDigits = 0;
    int decimals = 0;
    bool grouped = false;
};

Section readSection(const QString &pattern)
{
    Section section;
    bool point = false;
    bool digitsSeen = false;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern.at(i);
        if (c == QLatin1Char('#') || c == QLatin1Char('0')) {
            digitsSeen = true;
            if (point)
                ++section.decimals;
            else if (c == QLatin1Char('0'))
                ++section.leastDigits;
        } else if (c == QLatin1Char(',') && digitsSeen && !point) {
            section.grouped = true;
        } else if (c == QLatin1Char('.') && digitsSeen) {
            point = true;
        } else {
            const QChar literal = c == QLatin1Char('\\') && i + 1 < pattern.size() ? pattern.at(++i) : c;
            (digitsSeen ? section.after : section.before) += literal;
        }
    }
    return section;
}

/// Splits at the semicolon that no backslash escapes.
QStringList sectionsOf(const QString &pattern)
{
    QStringList sections{QString()};
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        if (pattern.at(i) == QLatin1Char('\\') && i + 1 < pattern.size()) {
            sections.last() += pattern.mid(i++, 2);
        } else if (pattern.at(i) == QLatin1Char(';')) {
            sections.append(QString());
        } else {
            sections.last() += pattern.at(i);
        }
    }
    return sections;
}

QString grouped(QString digits)
{
    for (qsizetype at = digits.size() - 3; at > 0; at -= 3)
        digits.insert(at, QLatin1Char(','));
    return digits;
}

/// The absolute value rounded half away from zero, as digits with as many decimals as asked for.
QString roundedDigits(const QVariant &value, int decimals)
{
    if (decimals == 0 && value.typeId() != QMetaType::Double && value.typeId() != QMetaType::Float) {
        const Currency amount = CCur(value);
        const quint64 scaled = amount.scaled() < 0 ? 0 - quint64(amount.scaled()) : quint64(amount.scaled());
        return QString::number((scaled + quint64(Currency::Scale) / 2) / quint64(Currency::Scale));
    }
    const double factor = std::pow(10.0, decimals);
    return QString::number(std::round(std::abs(CDbl(value)) * factor) / factor, 'f', decimals);
}

bool isNegative(const QVariant &value)
{
    return value.metaType() == QMetaType::fromType<Currency>() ? value.value<Currency>() < Currency() : CDbl(value) < 0;
}

QString formatNumber(const QVariant &value, const QString &pattern)
{
    const QStringList sections = sectionsOf(pattern);
    Section section = readSection(sections.at(0));
    QString digits = roundedDigits(value, section.decimals);
    // What rounds to zero shows as zero, without a sign.
    const bool negative = isNegative(value) && digits.toDouble() != 0;
    const bool ownSection = negative && sections.size() > 1;
    if (ownSection) {
        section = readSection(sections.at(1));
        digits = roundedDigits(value, section.decimals);
    }
    QString fraction;
    if (const qsizetype point = digits.indexOf(QLatin1Char('.')); point >= 0) {
        fraction = digits.mid(point);
        digits.truncate(point);
    }
    while (digits.startsWith(QLatin1Char('0')))
        digits.remove(0, 1);
    digits = digits.rightJustified(section.leastDigits, QLatin1Char('0'));
    if (section.grouped)
        digits = grouped(digits);
    const QString sign = negative && !ownSection ? QStringLiteral("-") : QString();
    return sign + section.before + digits + fraction + section.after;
}

std::optional<QString> formatDate(const QVariant &value, const QString &pattern)
{
    QString letters = pattern.toLower();
    if (!letters.contains(QLatin1String("yy")))
        return std::nullopt;
    const QDate date = value.typeId() == QMetaType::QString ? QDate::fromString(value.toString().left(10), Qt::ISODate)
                                                            : value.toDate();
    if (!date.isValid())
        return text(value);
    letters.replace(QLatin1Char('m'), QLatin1Char('M'));
    return QLocale::c().toString(date, letters);
}

} // namespace

QString Format(const QVariant &value, const QString &pattern)
{
    if (isNull(value) || text(value).isEmpty())
        return QStringLiteral("");
    if (const std::optional<QString> date = formatDate(value, pattern))
        return *date;
    if (value.typeId() == QMetaType::QString && !IsNumeric(value.toString()))
        return value.toString();
    return formatNumber(value, pattern == QLatin1String("Currency") ? strMoneyFormat : pattern);
}

QString money(Currency amount)
{
    return Format(QVariant::fromValue(amount), strMoneyFormat);
}

QString dateText(const QDate &date)
{
    return date.toString(Qt::ISODate);
}

QString dateTimeText(const QDateTime &moment)
{
    if (!moment.isValid())
        return QStringLiteral("");
    const QTime time = moment.time();
    if (time == QTime(0, 0))
        return dateText(moment.date());
    const int hour = time.hour() % 12 == 0 ? 12 : time.hour() % 12;
    return QStringLiteral("%1 %2 %3:%4:%5")
        .arg(dateText(moment.date()), time.hour() < 12 ? QStringLiteral("오전") : QStringLiteral("오후"))
        .arg(hour)
        .arg(time.minute(), 2, 10, QLatin1Char('0'))
        .arg(time.second(), 2, 10, QLatin1Char('0'));
}

} // namespace runtime
