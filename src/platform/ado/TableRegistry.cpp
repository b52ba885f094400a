#include "platform/ado/TableRegistry.h"

#include <QHash>
#include <QMutex>

#include <algorithm>
#include <atomic>
#include <memory>

namespace ado {

namespace {

/// What is known at one moment, by names in lower case, those of columns also as they are spelled. A new one takes its place and nothing of it ever goes: open
/// recordsets point into it, and connections of other threads may be reading.
struct Known
{
    std::unique_ptr<const Known> before;
    std::vector<std::shared_ptr<const Table>> tables;
    QHash<QString, const Table *> tableOf;
    QHash<QString, const Column *> columnOf;

    void add(const Table &table)
    {
        const Table &kept = *tables.emplace_back(std::make_shared<const Table>(table));
        tableOf.insert(kept.name.toLower(), &kept);
        for (const Column &column : kept.columns) {
            const Column *&known = columnOf[column.name.toLower()];
            const Column *const first = known ? known : &column;
            known = first;
            columnOf.insert(column.name, first); // may be where `known` was
        }
    }
};

std::atomic<const Known *> current = nullptr;

} // namespace

const Column *Table::column(QStringView wanted) const
{
    const auto found = std::ranges::find_if(
        columns, [&](const Column &column) { return wanted.compare(column.name, Qt::CaseInsensitive) == 0; });
    return found == columns.end() ? nullptr : &*found;
}

void registerTables(std::span<const Table> tables)
{
    static QMutex oneAtATime;
    const QMutexLocker lock(&oneAtATime);
    const auto isNew = [](const Table &table) { return !findTable(table.name); };
    if (std::ranges::none_of(tables, isNew))
        return;
    auto next = std::make_unique<Known>();
    if (const Known *const now = current) {
        next->tables = now->tables;
        next->tableOf = now->tableOf;
        next->columnOf = now->columnOf;
        next->before.reset(now);
    }
    for (const Table &table : tables) {
        if (isNew(table))
            next->add(table);
    }
    current = next.release();
}

const Table *findTable(QStringView name)
{
    const Known *const known = current;
    return known ? known->tableOf.value(name.toString().toLower()) : nullptr;
}

const Column *findColumn(QStringView name)
{
    // Every column of every answer is looked up here.
    const Known *const known = current;
    if (!known)
        return nullptr;
    const Column *const spelled = known->columnOf.value(QString::fromRawData(name.data(), name.size()));
    return spelled ? spelled : known->columnOf.value(name.toString().toLower());
}

} // namespace ado
