#include "desk/backup/ReadyTable.h"

#include "desk/backup/References.h"
#include "desk/backup/Refusal.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "desk/schema/Tables.h"

#include <QFileInfo>
#include <QLocale>

#include <algorithm>

namespace backup {

namespace {

const schema::TablePlan &planOf(const QString &name)
{
    return *std::ranges::find_if(schema::tablePlans(),
                                 [&](const schema::TablePlan &plan) { return name == QLatin1String(plan.name); });
}

QString columnCalled(const QStringList &columns, const char *name)
{
    const auto at = std::ranges::find_if(
        columns, [&](const QString &column) { return column.compare(QLatin1String(name), Qt::CaseInsensitive) == 0; });
    return at == columns.end() ? QString() : *at;
}

/// Whether the rows `k` and the table's differ; what another program keeps is compared as it is written.
QString differing(const ReadyTable &table, bool server)
{
    QStringList conditions;
    const auto add = [&](const QString &column, const QString &side) {
        conditions << side.arg(table.name + u'.' + column, QStringLiteral("k.") + column);
    };
    for (const QString &column : table.ours)
        add(column, server ? QStringLiteral("%1 IS DISTINCT FROM %2") : QStringLiteral("%1 IS NOT %2 COLLATE BINARY"));
    for (const QString &column : table.theirs)
        add(column, server ? QStringLiteral("%1::text IS DISTINCT FROM %2::text")
                           : QStringLiteral("%1 IS NOT %2 COLLATE BINARY"));
    return u'(' + conditions.join(QStringLiteral(" OR ")) + u')';
}

/// One clinic's tables, one statement after the other.
class Replacement
{
public:
    Replacement(ado::Connection &clinic, const std::vector<ReadyTable> &tables, const Progress &progress)
        : clinic_(clinic)
        , tables_(tables)
        , progress_(progress)
        , server_(schema::dialectOf(clinic) == schema::Dialect::PostgreSQL)
    {
    }

    /// What refers to a row goes before it, and comes after it.
    void run()
    {
        step();
        demandNoReferences(clinic_, tables_);
        for (auto table = tables_.rbegin(); table != tables_.rend(); ++table)
            named(*table, [&] { removeOthers(*table); });
        for (const ReadyTable &table : tables_)
            named(table, [&] { putIn(table); });
        for (const ReadyTable &table : tables_)
            named(table, [&] { demandSame(table); });
    }

private:
    void removeOthers(const ReadyTable &table)
    {
        schema::run(clinic_, table.key.isEmpty()
                                 ? QStringLiteral("DELETE FROM ") + table.name
                                 : QStringLiteral("DELETE FROM %1 WHERE NOT EXISTS (SELECT 1 FROM %2 k WHERE k.%3 = "
                                                  "%1.%3)")
                                       .arg(table.name, table.ready, table.key));
    }

    void putIn(const ReadyTable &table)
    {
        const QStringList columns = table.ours + table.theirs;
        if (!table.key.isEmpty()) {
            QStringList values;
            for (const QString &column : columns) {
                if (column != table.key)
                    values << QStringLiteral("%1 = k.%1").arg(column);
            }
            schema::run(clinic_, QStringLiteral("UPDATE %1 SET %2 FROM %3 k WHERE k.%4 = %1.%4 AND %5")
                                     .arg(table.name, values.join(QStringLiteral(", ")), table.ready, table.key,
                                          differing(table, server_)));
        }
        QString insert = QStringLiteral("INSERT INTO %1 (%2)%3 SELECT %2 FROM %4 k")
                             .arg(table.name, columns.join(QStringLiteral(", ")),
                                  server_ ? QStringLiteral(" OVERRIDING SYSTEM VALUE") : QString(), table.ready);
        if (!table.key.isEmpty())
            insert +=
                QStringLiteral(" WHERE NOT EXISTS (SELECT 1 FROM %1 WHERE %1.%2 = k.%2)").arg(table.name, table.key);
        schema::run(clinic_, insert);
    }

    /// Triggers and types of another program may have made something else of them.
    void demandSame(const ReadyTable &table)
    {
        QString statement = QStringLiteral("SELECT ABS((SELECT COUNT(*) FROM %1) - (SELECT COUNT(*) FROM %2))");
        if (!table.key.isEmpty())
            statement += QStringLiteral(" + (SELECT COUNT(*) FROM %1 JOIN %2 k ON k.%3 = %1.%3 WHERE %4)");
        statement.replace(QStringLiteral("%1"), table.name).replace(QStringLiteral("%2"), table.ready);
        statement.replace(QStringLiteral("%3"), table.key).replace(QStringLiteral("%4"), differing(table, server_));
        const qint64 different = schema::valueOf(clinic_, statement).toLongLong();
        if (different > 0)
            refuse(QStringLiteral("백업과 다르게 저장된 행 %1건").arg(different));
    }

    template <typename Work>
    void named(const ReadyTable &table, Work work)
    {
        try {
            work();
        } catch (const runtime::RuntimeError &error) {
            throw error.toldAs(error.number(), QStringLiteral("복원하지 못했습니다. 데이터베이스는 바뀌지 않았습니다: "
                                                              "%1\n%2")
                                                   .arg(table.name, error.description()));
        }
        step();
    }

    void step()
    {
        if (progress_ && !progress_(done_++, qint64(tables_.size()) * 3 + 1))
            stop();
    }

    ado::Connection &clinic_;
    const std::vector<ReadyTable> &tables_;
    const Progress &progress_;
    const bool server_;
    qint64 done_ = 0;
};

} // namespace

QString quotedName(QString name)
{
    return u'"' + name.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

std::vector<const char *> tablesOf(Scope scope)
{
    std::vector<const char *> hosts, sales;
    for (const schema::TablePlan &plan : schema::tablePlans())
        (QLatin1String(plan.name).startsWith(QLatin1String("tPS")) ? sales : hosts).push_back(plan.name);
    if (scope == Scope::All)
        sales.insert(sales.begin(), hosts.begin(), hosts.end());
    return sales;
}

void demandTables(const QStringList &missing)
{
    if (!missing.isEmpty())
        refuse(QStringLiteral("다른 데이터베이스이거나 테이블이 없는 데이터베이스라 복원하지 않았습니다. 없는 테이블: ")
               + missing.join(QStringLiteral(", ")));
}

ReadyTable readyTable(const QString &name, const QString &ready, const QStringList &here, const QStringList &kept)
{
    const schema::TablePlan &plan = planOf(name);
    ReadyTable table{name, ready, {}, {}, {}};
    QStringList known;
    for (const schema::ColumnPlan &column : plan.columns) {
        known << QString::fromLatin1(column.name).toLower();
        const QString target = columnCalled(here, column.name);
        if (target.isEmpty() && !columnCalled(kept, column.name).isEmpty())
            refuse(QStringLiteral("데이터베이스에 없는 항목이 백업에 있어 복원하지 않았습니다: %1.%2")
                       .arg(name, QLatin1String(column.name)));
        if (!target.isEmpty() && !columnCalled(kept, column.name).isEmpty())
            table.ours << quotedName(target);
    }
    for (const QString &column : here) {
        if (!known.contains(column.toLower()) && kept.contains(column))
            table.theirs << quotedName(column);
    }
    if (const QString key = columnCalled(here, plan.key().name); !key.isEmpty() && table.ours.contains(quotedName(key)))
        table.key = quotedName(key);
    return table;
}

void replaceRows(ado::Connection &clinic, const std::vector<ReadyTable> &tables, const Progress &progress)
{
    Replacement(clinic, tables, progress).run();
}

void noteRestore(ado::Connection &clinic, const QString &file)
{
    const bool server = schema::dialectOf(clinic) == schema::Dialect::PostgreSQL;
    const QString there = server ? QStringLiteral("SELECT COUNT(to_regclass('t_deskschema'))")
                                 : QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE name = 't_DeskSchema'");
    if (schema::valueOf(clinic, there).toInt() > 0)
        schema::run(clinic, QStringLiteral("UPDATE t_DeskSchema SET DS_Generation = DS_Generation + 1"));
    if (!schema::hasJournal(clinic))
        return;
    QString name = QFileInfo(file).fileName();
    name = u'\'' + name.replace(u'\'', QStringLiteral("''")) + u'\'';
    schema::run(clinic,
                (server ? QStringLiteral("SELECT clinic_journal.write('R', '', NULL, NULL, NULL, NULL, "
                                         "json_build_object('file', %1)::text)")
                        : QStringLiteral("INSERT INTO t_DeskJournal (DJ_Time, DJ_Action, DJ_Table, DJ_New) VALUES "
                                         "(strftime('%Y-%m-%dT%H:%M:%fZ', 'now'), 'R', '', json_object('file', "
                                         "%1))"))
                    .replace(QStringLiteral("%1"), name));
}

} // namespace backup
