#include "data/modGeneralSQL.h"

#include "platform/runtime/Conversions.h"
#include "platform/runtime/RuntimeError.h"

QString sqlEscapeQuotes(const QString &text)
{
    QString escaped = text;
    return escaped.replace(u'\'', QStringLiteral("''"));
}

double varToDouble(const QVariant &value)
{
    try {
        return runtime::isNull(value) ? 0 : runtime::CDbl(value);
    } catch (const runtime::RuntimeError &) {
        return 0;
    }
}
