#include "desk/schema/Address.h"

#include <QRegularExpression>

namespace schema {

QString addressToShow(QString address)
{
    using Expression = QRegularExpression;
    // A number up to the path is a port; everything else up to the last '@' may be part of a password.
    static const Expression inPlace(QStringLiteral("^([^:]*://[^:@/?]*):(?!\\d+(?:[/?]|$)).*@"),
                                    Expression::DotMatchesEverythingOption);
    static const Expression asOption(QStringLiteral("([?&](?:ssl)?password=)[^&]*"), Expression::CaseInsensitiveOption);
    static const Expression asAttribute(
        QStringLiteral("([:;]\\s*(?:pwd|password)\\s*=\\s*)(?:\\{(?:[^}]|\\}\\})*(?:\\}|$)|[^;]*)"),
        Expression::CaseInsensitiveOption);
    if (address.startsWith(QLatin1String("odbc:")))
        return address.replace(asAttribute, QStringLiteral("\\1***"));
    if (!address.startsWith(QLatin1String("sqlite:")))
        return address.replace(inPlace, QStringLiteral("\\1@")).replace(asOption, QStringLiteral("\\1***"));
    return address;
}

} // namespace schema
