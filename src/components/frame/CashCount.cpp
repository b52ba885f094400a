#include "components/frame/CashCount.h"

#include <QStringList>

#include <algorithm>

namespace statistics {

namespace {

constexpr QChar separator = u' ';
const QString notCounted = QStringLiteral("-");

} // namespace

bool CashCount::isCounted() const
{
    return std::any_of(counts.begin(), counts.end(), [](const auto &count) { return count.has_value(); });
}

Sum CashCount::amount(std::size_t piece) const
{
    return Sum(runtime::Currency::fromWon(pieces[piece])) * counts[piece].value_or(0);
}

Sum CashCount::counted() const
{
    Sum sum;
    for (std::size_t piece = 0; piece < pieces.size(); ++piece)
        sum += amount(piece);
    return sum;
}

QString CashCount::toText() const
{
    QStringList parts{day.toString(Qt::ISODate), opening.orZero().toText()};
    for (const std::optional<int> &count : counts)
        parts << (count ? QString::number(*count) : notCounted);
    return parts.join(separator);
}

CashCount CashCount::fromText(const QString &text)
{
    const QStringList parts = text.split(separator);
    CashCount count;
    if (parts.size() != qsizetype(pieces.size()) + 2)
        return count;
    count.day = QDate::fromString(parts[0], Qt::ISODate);
    count.opening = runtime::Currency::fromPlainText(parts[1].toLatin1()).value_or(runtime::Currency());
    for (std::size_t piece = 0; piece < pieces.size(); ++piece) {
        bool isNumber = false;
        const int number = parts[qsizetype(piece) + 2].toInt(&isNumber);
        if (isNumber)
            count.counts[piece] = number;
    }
    return count;
}

} // namespace statistics
