#include "desk/undo/LostOrder.h"

#include "desk/backup/Backup.h"
#include "desk/backup/SqliteFile.h"
#include "desk/schema/Journal.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "desk/undo/DumpedRows.h"

#include <QDateTime>
#include <QJsonDocument>

#include <algorithm>

namespace undo {

namespace {

/// The tables that hold an order, and how its rows are found there; the order's own first.
struct Part
{
    const char *table;
    const char *order;
    const char *customer; ///< the ledger holds treatment receipts under the same numbers
};

constexpr Part Parts[]{{"tPSOrderMaster", "OrdM_PK", ""},
                       {"tPSOrderDetail", "OrdM_PK", ""},
                       {"tPSTransaction", "tpstrans_OrderM_PK", "tpstrans_Customer_PK"}};

const schema::TablePlan &tableOf(const QString &name)
{
    return *std::ranges::find_if(schema::tablePlans(),
                                 [&](const schema::TablePlan &table) { return name == QLatin1String(table.name); });
}

QJsonObject rowOf(const QString &json)
{
    return QJsonDocument::fromJson(json.toUtf8()).object();
}

qint64 number(const QJsonObject &row, const char *column)
{
    return row.value(QLatin1String(column)).toVariant().toLongLong();
}

QList<QJsonObject> rowsInFile(backup::SqliteFile &file, const Part &part, int order)
{
    const schema::TablePlan &table = tableOf(QLatin1String(part.table));
    QList<QJsonObject> rows;
    const QStringList found = file.ask(
        QStringLiteral("SELECT %1 FROM %2 t WHERE t.%3 = %4 ORDER BY t.%5")
            .arg(schema::journalledRow(table, QStringLiteral("t"), schema::Dialect::SQLite), QLatin1String(part.table),
                 QLatin1String(part.order), QString::number(order), QLatin1String(table.key().name)));
    for (const QString &json : found)
        rows << rowOf(json);
    return rows;
}

/// By a reading of one part's rows.
template <typename Rows>
LostOrder gathered(Rows rowsOf)
{
    LostOrder lost;
    for (const Part &part : Parts) {
        for (const QJsonObject &row : rowsOf(part)) {
            if (!*part.customer || number(row, part.customer) == number(lost.order(), "Cust_PK"))
                lost.rows << LostRow{&tableOf(QLatin1String(part.table)), row};
        }
        if (lost.rows.isEmpty())
            break;
    }
    return lost;
}

enum EntryColumn { Number, Moment, Action, Table, Old };

bool isDeletion(const QVariantList &entry)
{
    return entry[Action].toString() == QLatin1String("D") && !entry[Old].isNull();
}

bool followsAtOnce(const QVariantList &entry, const QVariantList &before)
{
    constexpr qint64 pause = 1'000; // milliseconds; nobody deletes a payment and then its order so fast
    const auto momentOf = [](const QVariantList &of) {
        return QDateTime::fromString(of[Moment].toString(), Qt::ISODateWithMs);
    };
    return momentOf(before).msecsTo(momentOf(entry)) <= pause;
}

/// The last deletion of the order itself, and those beside it: who deletes an order does nothing else to it meanwhile. The
/// journal does not tell transactions.
QList<QVariantList> wentTogether(ado::Connection &connection, int order)
{
    const QVariant itself = schema::valueOf(
        connection, QStringLiteral("SELECT MAX(DJ_PK) FROM t_DeskJournal WHERE DJ_Order = %1 AND DJ_Table = "
                                   "'tPSOrderMaster' AND DJ_Action = 'D' AND DJ_Old IS NOT NULL")
                        .arg(order));
    if (itself.isNull())
        return {};
    // Without a treatment receipt that bears the order's number.
    const QList<QVariantList> entries = schema::rowsOf(
        connection,
        QStringLiteral(
            "SELECT DJ_PK, DJ_Time, DJ_Action, DJ_Table, DJ_Old FROM t_DeskJournal WHERE DJ_Order = %1 AND "
            "DJ_Action IN ('I', 'U', 'D') AND (DJ_Table <> 'tPSTransaction' OR DJ_Customer = (SELECT o.DJ_Customer "
            "FROM t_DeskJournal o WHERE o.DJ_PK = %2)) ORDER BY DJ_PK")
            .arg(QString::number(order), itself.toString()));
    QList<QVariantList> together;
    bool found = false;
    for (const QVariantList &entry : entries) {
        if (!isDeletion(entry) || (!together.isEmpty() && !followsAtOnce(entry, together.last()))) {
            if (found)
                break;
            together.clear();
        }
        if (isDeletion(entry))
            together << entry;
        found = found || entry[Number].toLongLong() == itself.toLongLong();
    }
    return together;
}

} // namespace

qint64 LostRow::key() const
{
    return number(row, table->key().name);
}

LostOrder orderInBackup(const QString &file, int order)
{
    LostOrder lost;
    if (backup::isOfServer(file)) {
        lost = gathered([&](const Part &part) {
            return rowsInDump(file, tableOf(QLatin1String(part.table)), QLatin1String(part.order), order);
        });
    } else {
        backup::SqliteFile kept(file, backup::SqliteFile::Open::ToRead);
        kept.demandClinic();
        lost = gathered([&](const Part &part) { return rowsInFile(kept, part, order); });
    }
    if (lost.rows.isEmpty())
        schema::refuse(QStringLiteral("백업에 없는 거래입니다: 거래번호 %1 (%2)").arg(order).arg(file));
    return lost;
}

LostOrder orderInJournal(ado::Connection &connection, int order)
{
    if (!schema::hasJournal(connection))
        schema::refuse(QStringLiteral("변경 이력이 없는 데이터베이스입니다. 백업 파일을 지정하십시오."));
    const QList<QVariantList> deleted = wentTogether(connection, order);
    if (deleted.isEmpty())
        schema::refuse(QStringLiteral("변경 이력에 삭제한 기록이 없는 거래입니다: 거래번호 %1").arg(order));
    return gathered([&](const Part &part) {
        QList<QJsonObject> rows;
        for (const QVariantList &entry : deleted) {
            if (entry[Table].toString() == QLatin1String(part.table))
                rows << rowOf(entry[Old].toString());
        }
        return rows;
    });
}

} // namespace undo
