#include "data/StatementText.h"

#include "platform/runtime/Format.h"

namespace statement {

QString fill(QStringView text, std::initializer_list<Replacement> replacements)
{
    QString filled = text.toString();
    for (const Replacement &replacement : replacements)
        filled.replace(replacement.place.toString(), replacement.value);
    return filled;
}

QString number(qint32 value)
{
    return QString::number(value);
}

QString amount(runtime::Currency value)
{
    return value.toText();
}

QString date(const QVariant &value)
{
    return runtime::Format(value, QStringLiteral("YYYY-MM-DD"));
}

QString quotedDate(const QVariant &value)
{
    return u'\'' + date(value) + u'\'';
}

} // namespace statement
