#include "forms/clsNumberRelated.h"
#include "fuzz/Fuzz.h"
#include "platform/runtime/Conversions.h"

// Whatever stands in a money box: at most nine signs of a number, which every conversion takes.
void fuzz(const QByteArray &bytes)
{
    const QString number = clsNumberRelated().GetPureNumber(QString::fromUtf8(bytes));
    const bool negative = number.startsWith(u'-');
    demand(number.size() <= 9 && number.size() > (negative ? 1 : 0), "between one digit and nine signs");
    for (const QChar sign : QStringView(number).sliced(negative ? 1 : 0))
        demand(sign >= u'0' && sign <= u'9', "digits only");
    demand(number != QLatin1String("-0"), "zero has no sign");
    const QVariant value(number);
    demand(runtime::IsNumeric(number) && runtime::CCur(value) == runtime::Currency::fromWon(runtime::CLng(value)),
           "a number to every conversion");
}
