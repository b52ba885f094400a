#include "platform/ado/Command.h"

namespace ado {

Command &Command::operator<<(QStringView text)
{
    text_ += text;
    return *this;
}

Command &Command::value(const QVariant &value)
{
    switch (style_) {
    case Values::Marked:
        values_ << value;
        return *this << u"?";
    case Values::Numbered:
        values_ << value;
        return *this << QStringLiteral("$%1").arg(values_.size());
    case Values::Literal:
        break;
    }
    if (!value.isValid())
        return *this << u"NULL";
    if (value.typeId() == QMetaType::LongLong)
        return *this << QString::number(value.toLongLong());
    if (value.typeId() == QMetaType::Double)
        return *this << QString::number(value.toDouble(), 'e', 16);
    QString literal = value.toString();
    literal.replace(u'\'', QStringLiteral("''"));
    return *this << u"'" << literal << u"'";
}

Command &Command::equals(const QVariant &value)
{
    if (!value.isValid())
        return *this << u" IS NULL";
    *this << u" = ";
    return this->value(value);
}

} // namespace ado
