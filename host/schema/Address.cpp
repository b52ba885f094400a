#include "host/schema/Address.h"

#include <QRegularExpression>

namespace schema {

QString addressToShow(QString address)
{
    static const QRegularExpression inPlace(QStringLiteral("^(postgresql://[^:@/?]*):[^/?]*@"));
    static const QRegularExpression asOption(QStringLiteral("([?&]password=)[^&]*"),
                                             QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression asAttribute(QStringLiteral("([:;]\\s*(?:pwd|password)\\s*=)(?:\\{[^}]*\\}|[^;]*)"),
                                                QRegularExpression::CaseInsensitiveOption);
    if (address.startsWith(QLatin1String("postgresql://")))
        return address.replace(inPlace, QStringLiteral("\\1@")).replace(asOption, QStringLiteral("\\1***"));
    if (address.startsWith(QLatin1String("odbc:")))
        return address.replace(asAttribute, QStringLiteral("\\1***"));
    return address;
}

} // namespace schema
