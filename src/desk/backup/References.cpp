#include "desk/backup/References.h"

#include "desk/backup/Refusal.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"

#include <QLocale>

#include <algorithm>

namespace backup {

namespace {

/// A foreign key, its columns in the order of those that they refer to.
struct Reference
{
    QString table;
    QStringList from;
    QStringList to;
};

// Each gives: the referring table, the key, its column, the column that it refers to. Names are as they stand in a statement.
const QString keysOnServer = QStringLiteral(
    "SELECT c.conrelid::regclass::text, c.conname, quote_ident(f.attname), quote_ident(t.attname) FROM pg_constraint "
    "c, "
    "unnest(c.conkey, c.confkey) WITH ORDINALITY AS pair (from_column, to_column, at) JOIN pg_attribute f ON true JOIN "
    "pg_attribute t ON true WHERE c.contype = 'f' AND c.confrelid = '%1'::regclass AND f.attrelid = c.conrelid AND "
    "f.attnum = pair.from_column AND t.attrelid = c.confrelid AND t.attnum = pair.to_column ORDER BY 1, 2, pair.at");
const QString keysInFile =
    QStringLiteral("SELECT '\"' || replace(m.name, '\"', '\"\"') || '\"', f.id, '\"' || f.\"from\" || '\"', '\"' || "
                   "COALESCE(f.\"to\", "
                   "(SELECT name FROM pragma_table_info('%1') WHERE pk = 1)) || '\"' FROM main.sqlite_master m, "
                   "pragma_foreign_key_list(m.name) f WHERE m.type = 'table' AND f.\"table\" = '%1' COLLATE NOCASE "
                   "ORDER BY 1, 2, f.seq");

std::vector<Reference> referencesTo(ado::Connection &clinic, const QString &table)
{
    const bool server = schema::dialectOf(clinic) == schema::Dialect::PostgreSQL;
    std::vector<Reference> references;
    QString last;
    const QList<QVariantList> rows =
        schema::rowsOf(clinic, server ? keysOnServer.arg(table.toLower()) : QString(keysInFile).replace("%1", table));
    for (const QVariantList &row : rows) {
        const QString name = row[0].toString() + u' ' + row[1].toString();
        if (std::exchange(last, name) != name)
            references.push_back({row[0].toString(), {}, {}});
        references.back().from << row[2].toString();
        references.back().to << row[3].toString();
    }
    return references;
}

/// How many rows refer to what would not be there any more.
qint64 leftAlone(ado::Connection &clinic, const ReadyTable &table, const Reference &reference)
{
    QStringList refers, stays;
    for (qsizetype at = 0; at < reference.from.size(); ++at) {
        refers << QStringLiteral("c.%1 = p.%2").arg(reference.from[at], reference.to[at]);
        stays << QStringLiteral("k.%1 = p.%1").arg(reference.to[at]);
    }
    const QString both = QStringLiteral(" AND ");
    return schema::valueOf(clinic,
                           QStringLiteral("SELECT COUNT(*) FROM %1 c JOIN %2 p ON %3 WHERE NOT EXISTS (SELECT 1 "
                                          "FROM %4 k WHERE %5)")
                               .arg(reference.table, table.name, refers.join(both), table.ready, stays.join(both)))
        .toLongLong();
}

bool isAmong(const std::vector<ReadyTable> &tables, const QString &name)
{
    return std::ranges::any_of(tables, [&](const ReadyTable &table) {
        return QString(name).remove(u'"').section(u'.', -1).compare(table.name, Qt::CaseInsensitive) == 0;
    });
}

} // namespace

void demandNoReferences(ado::Connection &clinic, const std::vector<ReadyTable> &tables)
{
    QStringList found;
    for (const ReadyTable &table : tables) {
        for (const Reference &reference : referencesTo(clinic, table.name)) {
            if (isAmong(tables, reference.table)) // whose rows come back as well
                continue;
            if (const qint64 rows = leftAlone(clinic, table, reference); rows > 0)
                found << QStringLiteral("%1 → %2: %3건")
                             .arg(QString(reference.table).remove(u'"'), table.name,
                                  QLocale(QLocale::Korean, QLocale::SouthKorea).toString(rows));
        }
    }
    if (!found.isEmpty())
        refuse(QStringLiteral(
                   "다른 프로그램의 테이블이 백업에 없는 행을 사용하고 있어 복원하지 않았습니다. 데이터베이스는 "
                   "바뀌지 않았습니다.\n%1")
                   .arg(found.join(u'\n')));
}

} // namespace backup
