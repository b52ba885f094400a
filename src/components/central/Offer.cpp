#include "components/central/Offer.h"

#include "clinic/ChainTables.h"
#include "platform/runtime/Conversions.h"

#include <algorithm>

namespace central {

namespace {

/// A column of fixed width fills up what is shorter.
QString withoutFilling(QString text)
{
    while (text.endsWith(u' '))
        text.chop(1);
    return text.isEmpty() ? QString() : text;
}

} // namespace

QString sameOnEveryEngine(const QString &text, ado::ColumnType holds)
{
    if (text.isEmpty()) // an empty text and none are shown alike
        return {};
    switch (holds) {
    case ado::ColumnType::Money:
        if (const auto plain = runtime::Currency::fromPlainText(text.toLatin1()))
            return plain->toText();
        return runtime::CCur(text).toText();
    case ado::ColumnType::Flag:
        return text == QLatin1String("t") || runtime::Val(text) != 0 ? QStringLiteral("1") : QStringLiteral("0");
    case ado::ColumnType::Date:
        return text.left(10);
    default:
        return withoutFilling(text);
    }
}

Product productIn(const QStringList &row, qsizetype first)
{
    Product product;
    for (const clinic::Column &column : clinic::chainColumns())
        product << sameOnEveryEngine(row[first++], column.holds);
    return product;
}

qsizetype placeOf(const char *column)
{
    const auto columns = clinic::chainColumns();
    return std::ranges::find_if(columns, [&](const clinic::Column &one) { return qstrcmp(one.name, column) == 0; })
           - columns.begin();
}

} // namespace central
