#include "desk/schema/Shape.h"

#include <QRegularExpression>

#include <algorithm>

namespace schema {

namespace {

/// Engines and installers call one thing by several names.
const char *typesThatHold(Holds holds)
{
    switch (holds) {
    case Holds::Key:
    case Holds::Long:
    case Holds::Integer:
    case Holds::Flag:
        return "int";
    case Holds::Money:
        return "int|numeric|decimal|money";
    case Holds::Number:
        return "real|double|float|numeric|decimal";
    case Holds::Date:
        return "text|char|date|timestamp";
    case Holds::Text:
        return "text|char";
    }
    Q_UNREACHABLE();
}

} // namespace

QString whyForeign(const TablePlan &table, const QList<FoundColumn> &columns)
{
    const auto tell = [&](const QString &column, const QString &why) {
        return QStringLiteral("%1.%2: %3").arg(QString::fromLatin1(table.name), column, why);
    };
    QStringList ours;
    for (const ColumnPlan &plan : table.columns) {
        const QString name = QString::fromLatin1(plan.name);
        ours << name.toLower();
        const auto found = std::ranges::find_if(
            columns, [&](const FoundColumn &column) { return column.name.compare(name, Qt::CaseInsensitive) == 0; });
        if (found == columns.end() && plan.own)
            continue;
        if (found == columns.end())
            return tell(name, QStringLiteral("없는 항목"));
        const QRegularExpression fitting(QString::fromLatin1(typesThatHold(plan.holds)),
                                         QRegularExpression::CaseInsensitiveOption);
        if (!found->type.contains(fitting))
            return tell(name, QStringLiteral("다른 형식 ") + found->type);
        const bool isKey = &plan == &table.key();
        if (found->required && !found->filled && !plan.required && !isKey)
            return tell(name, QStringLiteral("비워 둘 수 없는 항목"));
    }
    for (const FoundColumn &column : columns) {
        if (column.required && !column.filled && !ours.contains(column.name.toLower()))
            return tell(column.name, QStringLiteral("비워 둘 수 없는 다른 프로그램의 항목"));
    }
    return {};
}

} // namespace schema
