#include "desk/journal/Chain.h"

#include "desk/journal/Seal.h"
#include "desk/schema/Journal.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"

#include <algorithm>

namespace journal {

namespace {

constexpr int RowsAtOnce = 5'000;

/// Whether the row, its hash behind its parts, follows on that place and hash.
bool follows(const QVariantList &row, qint64 place, const Part &before)
{
    std::vector<Part> parts{before};
    for (qsizetype at = 0; at + 1 < row.size(); ++at)
        parts.push_back(partOf(row[at]));
    return row.front().toLongLong() == place + 1 && partOf(row.back()) == sealOf(parts);
}

} // namespace

Chain walk(ado::Connection &connection)
{
    Chain chain;
    Part before;
    const QString next = QStringLiteral("SELECT %1, DJ_Hash FROM t_DeskJournal WHERE DJ_Place > %2 ORDER BY DJ_Place "
                                        "LIMIT %3")
                             .arg(QLatin1String(SealedColumns));
    qint64 from = -1'000'000'000'000;
    for (;;) {
        const QList<QVariantList> rows = schema::rowsOf(connection, next.arg(from).arg(RowsAtOnce));
        for (const QVariantList &row : rows) {
            if (chain.brokenAt == 0 && !follows(row, chain.last, before))
                chain.brokenAt = chain.last + 1;
            chain.last = row.front().toLongLong();
            before = partOf(row.back());
        }
        chain.rows += rows.size();
        if (rows.size() < RowsAtOnce)
            break;
        from = chain.last;
    }
    chain.hash = QString::fromLatin1(before.value_or(QByteArray()));
    chain.open =
        schema::valueOf(connection, QStringLiteral("SELECT COUNT(*) FROM t_DeskJournal WHERE DJ_Place IS NULL"))
            .toLongLong();
    chain.rows += chain.open;
    return chain;
}

QString differingRows(const ado::Connection &connection, const QString &table)
{
    const std::span<const schema::JournalPlan> plans = schema::journalPlans();
    const schema::JournalPlan &plan =
        *std::ranges::find_if(plans, [&](const schema::JournalPlan &one) { return QLatin1String(one.table) == table; });
    const schema::TablePlan &columns = schema::tableOf(plan);
    // What stands before the last beginning was written by the engine that the clinic came from, in that one's words.
    return QStringLiteral(
               "SELECT j.DJ_Row AS 번호, j.DJ_Order AS 거래번호, j.DJ_Time AS 마지막기록시각 FROM t_DeskJournal j JOIN "
               "(SELECT MAX(DJ_PK) AS last FROM t_DeskJournal WHERE DJ_Table = '%1' AND DJ_Action <> 'B' AND "
               "DJ_PK > (SELECT COALESCE(MAX(DJ_PK), 0) FROM t_DeskJournal WHERE DJ_Table = '%1' AND DJ_Action = 'B') "
               "GROUP BY DJ_Row) l ON l.last = j.DJ_PK LEFT JOIN %1 t ON t.%2 = j.DJ_Row WHERE CASE WHEN t.%2 IS NULL "
               "THEN "
               "j.DJ_Action <> 'D' ELSE j.DJ_New IS NULL OR j.DJ_New <> %3 END "
               "UNION ALL SELECT t.%2, t.%4, NULL FROM %1 t WHERE t.%2 > (SELECT MAX(DJ_Row) FROM t_DeskJournal WHERE "
               "DJ_Table = '%1' AND DJ_Action = 'B') AND t.%2 NOT IN (SELECT j.DJ_Row FROM t_DeskJournal j WHERE "
               "j.DJ_Table = '%1' AND j.DJ_Action <> 'B' AND j.DJ_Row IS NOT NULL) ORDER BY 1")
        .arg(table, QLatin1String(columns.key().name),
             schema::journalledRow(columns, QStringLiteral("t"), schema::dialectOf(connection)),
             QLatin1String(plan.order));
}

} // namespace journal
