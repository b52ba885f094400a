#include "plugins/frame/Sheet.h"

#include "platform/runtime/Format.h"

#include <QVariant>

namespace statistics {

QString plainText(const Cell &cell)
{
    if (const auto *text = std::get_if<QString>(&cell))
        return *text;
    if (const auto *number = std::get_if<runtime::Currency>(&cell))
        return number->toText();
    return {};
}

QString shownText(const Cell &cell)
{
    const auto *number = std::get_if<runtime::Currency>(&cell);
    if (!number)
        return plainText(cell);
    const QString plain = number->toText();
    const qsizetype point = plain.indexOf(QLatin1Char('.'));
    if (point < 0)
        return runtime::Format(QVariant::fromValue(*number), QStringLiteral("#,##0"));
    return runtime::Format(QVariant::fromValue(*number),
                           QStringLiteral("#,##0.") + QString(plain.size() - point - 1, QLatin1Char('0')));
}

bool isBefore(const Cell &a, const Cell &b)
{
    return a < b; // Hangul stands in the order of its alphabet as it is
}

bool isNumber(const Cell &cell)
{
    return std::holds_alternative<runtime::Currency>(cell);
}

} // namespace statistics
