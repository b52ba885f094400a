#include "trials/interleavings/Rows.h"

#include "clinic/Tables.h"
#include "trials/interleavings/Operations.h"

#include <algorithm>
#include <cmath>

namespace trial {

namespace {

const QString orders = QStringLiteral("tPSOrderMaster");
const QString lines = QStringLiteral("tPSOrderDetail");

const clinic::Table &tableOf(const QString &name)
{
    return *std::ranges::find_if(clinic::tables(),
                                 [&](const clinic::Table &table) { return name == QLatin1String(table.name); });
}

QString columnOf(const Change::Cell &cell)
{
    return QString::fromLatin1(tableOf(cell.table).columns[std::size_t(cell.column)].name);
}

constexpr unsigned setByNobody = 1U << 31;

/// The sums that an operation must set for the column to be other than the sum; 0 for a column that is none.
unsigned sumOf(const QString &column)
{
    static const std::map<QString, unsigned> sums{{QStringLiteral("OrdM_TaxTotal"), TaxParts},
                                                  {QStringLiteral("OrdM_TaxFreeTotal"), TaxParts},
                                                  {QStringLiteral("OrdM_HalinTotal"), Discount},
                                                  {QStringLiteral("OrdM_Misugum"), Owed},
                                                  {QStringLiteral("OrdM_Total"), setByNobody}};
    const auto found = sums.find(column);
    return found == sums.end() ? 0 : found->second;
}

/// Without what the database gives: its key, the key of an order that is new, and the sums of one.
QStringList masked(const QString &table, QStringList row, const Rows &before)
{
    row[0].clear();
    const std::vector<clinic::Column> &columns = tableOf(table).columns;
    for (qsizetype at = 0; at < row.size(); ++at) {
        const QString name = QString::fromLatin1(columns[std::size_t(at)].name);
        const bool ofNewOrder =
            (table == lines && name == QLatin1String("OrdM_PK")) && !before.at(orders).contains(row[at].toLongLong());
        const bool sum = table == orders && columns[std::size_t(at)].holds == ado::ColumnType::Money;
        if (ofNewOrder || sum)
            row[at].clear();
    }
    return row;
}

/// What several changed: the sum of what each did, or what one of them wrote.
bool fits(const Change::Cell &cell, const QString &before, const QString &found, const QStringList &written,
          Allowance allowance)
{
    const unsigned summed = sumOf(columnOf(cell));
    const unsigned set = allowance.set & summed;
    // What is sold of a product moves to the other part with the product's tax; the rules of --check watch their sum.
    if (set & TaxParts)
        return true;
    if (written.isEmpty())
        return found == before;
    if (set & Owed)
        return true;
    double sum = before.toDouble();
    for (const QString &value : written)
        sum += value.toDouble() - before.toDouble();
    const auto isAbout = [&](double value) { return std::abs(found.toDouble() - value) < 0.5; };
    const bool asSum = isAbout(sum);
    if (summed != 0 && set == 0)
        return asSum;
    // A discount that was typed stands until the next line: then it is that of the lines again, as if never typed.
    if (set == Discount && allowance.reckoned && std::ranges::any_of(written, [&](const QString &typed) {
            return isAbout(sum - (typed.toDouble() - before.toDouble()));
        }))
        return true;
    return written.contains(found) || (asSum && before != found);
}

} // namespace

Rows readRows(const ado::Connection &clinic)
{
    Rows all;
    for (const clinic::Table &table : clinic::tables()) {
        const QString name = QString::fromLatin1(table.name);
        if (!name.startsWith(QLatin1String("tPS")))
            continue;
        const ado::CellTable rows = clinic.read(QStringLiteral("SELECT * FROM ") + name);
        auto &read = all[name];
        for (int row = 0; row < rows.rowCount(); ++row) {
            QStringList values;
            for (int column = 0; column < rows.columnCount(); ++column)
                values << rows.raw(row, column).toString();
            read[values[0].toLongLong()] = values;
        }
    }
    return all;
}

Change changeOf(const Rows &before, const Rows &after)
{
    Change change;
    for (const auto &[table, rows] : before) {
        const auto &now = after.at(table);
        for (const auto &[key, row] : rows) {
            const auto found = now.find(key);
            if (found == now.end()) {
                change.gone.insert({table, key});
                continue;
            }
            for (qsizetype column = 0; column < row.size(); ++column)
                if (row[column] != found->second[column])
                    change.written[{table, key, column}] = found->second[column];
        }
        for (const auto &[key, row] : now)
            if (!rows.contains(key))
                change.added[table].insert(masked(table, row, before));
    }
    return change;
}

QString differenceFrom(const Rows &before, const Change &found, const std::vector<const Change *> &parts,
                       Allowance allowance)
{
    Change together;
    std::map<Change::Cell, QStringList> written;
    for (const auto &[cell, value] : found.written)
        written[cell];
    for (const Change *part : parts) {
        together.gone.insert(part->gone.begin(), part->gone.end());
        for (const auto &[table, rows] : part->added)
            together.added[table].insert(rows.begin(), rows.end());
        for (const auto &[cell, value] : part->written)
            written[cell] << value;
    }
    if (found.gone != together.gone)
        return QStringLiteral("%1 rows are gone instead of %2").arg(found.gone.size()).arg(together.gone.size());
    for (const auto &[cell, values] : written) {
        if (found.gone.contains({cell.table, cell.key}))
            continue;
        const QString was = before.at(cell.table).at(cell.key)[cell.column];
        const auto is = found.written.find(cell);
        const QString value = is == found.written.end() ? was : is->second;
        if (!fits(cell, was, value, values, allowance))
            return QStringLiteral("%1 of %2 is %3, was %4, written: %5")
                .arg(columnOf(cell))
                .arg(cell.key)
                .arg(value, was, values.join(u','));
    }
    for (const auto &[table, rows] : together.added) {
        const auto is = found.added.find(table);
        const std::multiset<QStringList> &now = is == found.added.end() ? std::multiset<QStringList>() : is->second;
        const bool shared = allowance.sharedDay && table == orders && !now.empty() && now.size() < rows.size();
        if (now != rows && !shared)
            return QStringLiteral("%1 rows were added to %2 instead of %3").arg(now.size()).arg(table).arg(rows.size());
    }
    for (const auto &[table, rows] : found.added)
        if (!together.added.contains(table))
            return QStringLiteral("%1 rows were added to %2 by nobody").arg(rows.size()).arg(table);
    return {};
}

} // namespace trial
