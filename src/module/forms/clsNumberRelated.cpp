#include "forms/clsNumberRelated.h"

namespace {

constexpr qsizetype longestNumber = 9; // the minus counts as one

// Digits of other scripts count with their value: a full-width 5 is a 5.
QString digitsOf(const QString &text)
{
    QString digits;
    for (const QChar character : text) {
        if (character.isDigit())
            digits += QChar(u'0' + character.digitValue());
    }
    return digits;
}

bool isZero(const QString &number)
{
    for (const QChar character : number) {
        if (character != u'0' && character != u'-')
            return false;
    }
    return true;
}

} // namespace

QString clsNumberRelated::GetPureNumber(const QString &text) const
{
    QString source = text;
    // A digit typed in front of the sign of an empty money box: only that digit was meant.
    if (source.endsWith(QLatin1String("\\0")))
        source = QLatin1Char('\\') + source.first(1);

    QString number = digitsOf(source);
    if (number.isEmpty())
        number = QStringLiteral("0");
    if (source.contains(u'-') && number != QLatin1String("0"))
        number.prepend(u'-');

    if (number.size() > longestNumber)
        return number.first(longestNumber);
    return isZero(number) ? QStringLiteral("0") : number;
}
