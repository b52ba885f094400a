#include "desk/copy/CopiedTable.h"

#include "desk/rows/ExactValue.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "platform/ado/CellTable.h"
#include "platform/runtime/RuntimeError.h"

#include <QCryptographicHash>
#include <QtEndian>

#include <algorithm>

namespace copy {

namespace {

constexpr int RowsAtOnce = 5'000;

QString selectStatement(const CopiedTable &table, const QString &behind)
{
    const QStringList columns = table.withKey ? table.columns : QStringList(table.key) + table.columns;
    QString statement = QStringLiteral("SELECT %1 FROM %2").arg(columns.join(QStringLiteral(", ")), table.name);
    if (!behind.isEmpty())
        statement += QStringLiteral(" WHERE %1 > %2").arg(table.key, behind);
    statement += QStringLiteral(" ORDER BY ") + table.key;
    return table.inPages ? statement + QStringLiteral(" LIMIT %1").arg(RowsAtOnce) : statement;
}

QVariant exactCell(const ado::CellTable &cells, int row, int at, schema::Holds holds, ado::Engine fitting)
{
    const ado::CellTable::Cell cell = cells.cell(row, at);
    if (cell.kind == ado::CellTable::Kind::Text && !cells.text(cell).isValidUtf8())
        schema::refuse(QStringLiteral("저장할 수 없는 문자가 있습니다"));
    const QVariant exact = rows::exactValue(cells.raw(row, at), holds);
    rows::demandFit(exact, fitting);
    return exact;
}

QVariantList exactRow(const ado::CellTable &cells, int row, const CopiedTable &table, ado::Engine fitting)
{
    QVariantList values;
    const int first = table.withKey ? 0 : 1;
    for (qsizetype at = 0; at < table.columns.size(); ++at) {
        try {
            values << exactCell(cells, row, int(at) + first, table.holds[std::size_t(at)], fitting);
        } catch (const runtime::RuntimeError &error) {
            throw error.toldAs(
                error.number(),
                QStringLiteral("복사할 수 없는 값이 있어 복사하지 않았습니다. 값을 수정한 뒤 다시 "
                               "시도하십시오: %1.%2 (%3 %4) %5")
                    .arg(table.name, table.columns[at], table.key, cells.raw(row, 0).toString(), error.description()));
        }
    }
    return values;
}

} // namespace

std::vector<CopiedTable> clinicTables(ado::Connection &source)
{
    const clinic::Catalogue catalogue = schema::foundTables(source);
    std::vector<CopiedTable> all;
    for (const schema::TablePlan &plan : schema::tablePlans()) {
        const QString name = QString::fromLatin1(plan.name);
        const clinic::FoundTable *const found = catalogue.table(name);
        const auto has = [&](const schema::ColumnPlan &column) {
            return !column.own || !found || found->column(QString::fromLatin1(column.name));
        };
        const schema::ColumnPlan &first = has(plan.key()) ? plan.key() : *std::ranges::find_if(plan.columns, has);
        CopiedTable table{name, {}, {}, QString::fromLatin1(first.name)};
        table.inPages = first.holds == schema::Holds::Key;
        for (const schema::ColumnPlan &column : plan.columns) {
            if (!has(column))
                continue;
            table.columns << QString::fromLatin1(column.name);
            table.holds.push_back(column.holds);
        }
        all.push_back(std::move(table));
    }
    return all;
}

CopiedTable journalTable()
{
    CopiedTable table{QStringLiteral("t_DeskJournal"),
                      QStringLiteral("DJ_Time DJ_Who DJ_Action DJ_Table DJ_Row DJ_Order DJ_Customer DJ_Old DJ_New "
                                     "DJ_Place DJ_Hash")
                          .split(u' '),
                      {},
                      QStringLiteral("DJ_PK")};
    // Its hash is taken of texts, so nothing in it is anything else.
    table.holds.assign(std::size_t(table.columns.size()), schema::Holds::Text);
    table.withKey = false;
    return table;
}

qint64 countRows(ado::Connection &connection, const CopiedTable &table)
{
    return schema::valueOf(connection, QStringLiteral("SELECT COUNT(*) FROM ") + table.name).toLongLong();
}

void forEachRow(ado::Connection &connection, const CopiedTable &table, ado::Engine fitting,
                const std::function<void(const QVariantList &)> &take)
{
    QString last;
    for (;;) {
        const ado::CellTable cells = connection.read(selectStatement(table, last));
        for (int row = 0; row < cells.rowCount(); ++row)
            take(exactRow(cells, row, table, fitting));
        if (!table.inPages || cells.rowCount() < RowsAtOnce)
            return;
        last = cells.raw(cells.rowCount() - 1, 0).toString();
    }
}

void RowSum::add(const QVariantList &row)
{
    QByteArray line;
    for (const QVariant &value : row) {
        const QByteArray text = rows::plainText(value);
        line += (value.isValid() ? QByteArray::number(text.size()) + ':' + text : QByteArray("-"));
    }
    ++rows_;
    sum_ += qFromLittleEndian<quint64>(QCryptographicHash::hash(line, QCryptographicHash::Sha1).constData());
}

} // namespace copy
