#include "desk/undo/OrderBack.h"

#include "desk/rows/BulkInsert.h"
#include "desk/rows/ExactValue.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/RuntimeError.h"

namespace undo {

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QStringList columnsOf(const schema::TablePlan &table)
{
    QStringList columns;
    for (const schema::ColumnPlan &column : table.columns)
        columns << latin(column.name);
    return columns;
}

QVariant exact(const schema::ColumnPlan &column, const QVariant &raw)
{
    return rows::exactValue(raw, column.holds);
}

QVariantList exactRow(const LostRow &lost, ado::Engine engine)
{
    QVariantList values;
    for (const schema::ColumnPlan &column : lost.table->columns) {
        const QJsonValue value = lost.row.value(latin(column.name));
        values << exact(column, value.isNull() || value.isUndefined() ? QVariant() : value.toVariant());
        rows::demandFit(values.last(), engine);
    }
    return values;
}

/// What stands under the row's key now; empty for nothing.
QVariantList standing(ado::Connection &connection, const LostRow &lost)
{
    const schema::TablePlan &table = *lost.table;
    const QVariantList row =
        schema::rowsOf(connection, QStringLiteral("SELECT %1 FROM %2 WHERE %3 = %4")
                                       .arg(columnsOf(table).join(QStringLiteral(", ")), latin(table.name),
                                            latin(table.key().name), QString::number(lost.key())))
            .value(0);
    QVariantList values;
    for (qsizetype at = 0; at < row.size(); ++at)
        values << exact(table.columns[std::size_t(at)], row[at]);
    return values;
}

bool exists(ado::Connection &connection, const char *table, const char *key, qint64 value)
{
    return schema::valueOf(connection, QStringLiteral("SELECT COUNT(*) FROM %1 WHERE %2 = %3")
                                           .arg(latin(table), latin(key), QString::number(value)))
               .toInt()
           > 0;
}

qint64 number(const LostRow &lost, const char *column)
{
    return lost.row.value(latin(column)).toVariant().toLongLong();
}

void demandFree(ado::Connection &connection, const LostOrder &lost)
{
    const LostRow &order = lost.rows.front();
    // From here on no desk writes there before this has ended.
    if (connection.holdRow(latin(order.table->name), latin(order.table->key().name), qint32(order.key())))
        schema::refuse(QStringLiteral("이미 있는 거래라 복원하지 않았습니다: 거래번호 %1").arg(order.key()));
    const qint64 patient = number(order, "Cust_PK");
    if (!exists(connection, "Customer", "Customer_PK", patient))
        schema::refuse(QStringLiteral("환자가 없는 거래라 복원하지 않았습니다: 거래번호 %1, 환자번호 %2")
                           .arg(order.key())
                           .arg(patient));
}

void note(ado::Connection &connection, const LostRow &row, PutBack &outcome)
{
    if (latin(row.table->name) == QLatin1String("tPSTransaction"))
        ++outcome.money;
    if (latin(row.table->name) != QLatin1String("tPSOrderDetail"))
        return;
    ++outcome.lines;
    const qint64 product = number(row, "PM_PK");
    if (!exists(connection, "tPSProductMaster", "PM_PK", product))
        outcome.notices
            << QStringLiteral("판매 내역의 물품이 없습니다. 합계를 다시 계산하면 빠집니다: 물품번호 %1").arg(product);
}

} // namespace

PutBack putBack(ado::Connection &connection, const LostOrder &lost)
{
    PutBack outcome;
    ado::Transaction scope(connection);
    demandFree(connection, lost);
    for (const LostRow &row : lost.rows) {
        const QVariantList values = exactRow(row, connection.engine());
        const QVariantList there = standing(connection, row);
        if (!there.isEmpty() && there != values)
            schema::refuse(QStringLiteral("번호를 다른 내역이 쓰고 있어 복원하지 않았습니다: %1 %2")
                               .arg(latin(row.table->name))
                               .arg(row.key()));
        if (there.isEmpty()) {
            rows::BulkInsert insert(connection, latin(row.table->name), columnsOf(*row.table));
            insert.add(values);
            insert.finish();
        }
        note(connection, row, outcome);
    }
    schema::continueKeys(connection);
    scope.commit();
    return outcome;
}

} // namespace undo
