#include "desk/schema/Shape.h"

#include "clinic/ColumnFit.h"

#include <algorithm>

namespace schema {

QString whyForeign(const TablePlan &table, const QList<FoundColumn> &columns, Dialect dialect)
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
        const clinic::Misfit misfit = clinic::misfitOf(plan, found->type, dialect == Dialect::SQLite);
        if (misfit.loses)
            return tell(name, QStringLiteral("%1 (%2)").arg(QString::fromUtf8(misfit.why), found->type));
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
