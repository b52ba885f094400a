#include "desk/journal/Entries.h"

#include "desk/schema/Journal.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"

#include <QJsonDocument>

namespace journal {

namespace {

QJsonObject rowOf(const QVariant &text)
{
    return QJsonDocument::fromJson(text.toString().toUtf8()).object();
}

/// Rows that `condition` holds for; `sealed` are conditions for the indexes of those that are sealed, together the same.
std::vector<Entry> entries(ado::Connection &connection, const QString &condition, const QStringList &sealed)
{
    QStringList keys{QStringLiteral("SELECT DJ_PK FROM t_DeskJournal WHERE %1 AND (%2)")
                         .arg(schema::journalOpenRows(schema::dialectOf(connection)), condition)};
    for (const QString &one : sealed)
        keys << QStringLiteral("SELECT DJ_PK FROM t_DeskJournal WHERE DJ_Place IS NOT NULL AND %1").arg(one);
    const QList<QVariantList> rows = schema::rowsOf(
        connection,
        QStringLiteral("SELECT DJ_Time, DJ_Who, DJ_Action, DJ_Table, DJ_Order, DJ_Customer, DJ_Old, DJ_New "
                       "FROM t_DeskJournal WHERE DJ_Action IN ('I', 'U', 'D', 'R') AND DJ_PK IN (%1) ORDER BY DJ_PK "
                       "DESC LIMIT %2")
            .arg(keys.join(QStringLiteral(" UNION ALL ")), QString::number(MostEntries)));
    std::vector<Entry> all;
    for (const QVariantList &row : rows)
        all.push_back({QDateTime::fromString(row[0].toString(), Qt::ISODateWithMs).toLocalTime(), row[1].toString(),
                       row[2].toString().toLatin1().at(0), row[3].toString(), row[4].toString(), row[5].toString(),
                       rowOf(row[6]), rowOf(row[7])});
    return all;
}

/// The first moment of the day, as the journal writes it.
QString momentOf(const QDate &day)
{
    return day.startOfDay().toUTC().toString(QStringLiteral("yyyy-MM-dd'T'HH:mm:ss.zzz'Z'"));
}

} // namespace

std::vector<Entry> entriesOfCustomer(ado::Connection &connection, qint64 customer)
{
    const QString his = QStringLiteral("DJ_Customer = %1").arg(customer);
    // A line that went together with its order does not tell the patient any more.
    const QString lost =
        QStringLiteral("DJ_Customer IS NULL AND DJ_Order IN (SELECT DJ_Order FROM t_DeskJournal WHERE %1 "
                       "AND DJ_Place IS NOT NULL UNION ALL SELECT DJ_Order FROM t_DeskJournal WHERE %1 "
                       "AND %2)")
            .arg(his, schema::journalOpenRows(schema::dialectOf(connection)));
    return entries(connection, his + QStringLiteral(" OR ") + lost, {his, lost});
}

std::vector<Entry> changesOfDay(ado::Connection &connection, const QDate &day)
{
    const QString ofDay = QStringLiteral("DJ_Action <> 'I' AND DJ_Time >= '%1' AND DJ_Time < '%2'")
                              .arg(momentOf(day), momentOf(day.addDays(1)));
    return entries(connection, ofDay, {ofDay});
}

} // namespace journal
