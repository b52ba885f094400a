#include "desk/rows/BulkUpdate.h"

#include "desk/schema/Tables.h"
#include "platform/ado/ColumnValue.h"

#include <algorithm>

namespace rows {

namespace {

constexpr qsizetype RowsPerUpdate = 1'000; // a server may read the whole table for each

const char *serverType(const QString &table, const QString &column)
{
    for (const schema::TablePlan &plan : schema::tablePlans()) {
        for (const schema::ColumnPlan &known : plan.columns) {
            if (QLatin1String(plan.name) != table || QLatin1String(known.name) != column)
                continue;
            switch (known.holds) {
            case schema::Holds::Key:
            case schema::Holds::Long:
                return "integer";
            case schema::Holds::Integer:
            case schema::Holds::Flag:
                return "smallint";
            case schema::Holds::Money:
                return "numeric";
            case schema::Holds::Number:
                return "double precision";
            case schema::Holds::Date:
                return "date";
            case schema::Holds::Text:
                return "text";
            }
        }
    }
    Q_UNREACHABLE();
}

/// A server takes a value of such a block for a text, wherever it goes.
QString cell(const QString &table, const QString &column, int number, bool server)
{
    const QString name = QStringLiteral("v.column%1").arg(number);
    return server ? QStringLiteral("CAST(%1 AS %2)").arg(name, QLatin1String(serverType(table, column))) : name;
}

QString settingsOf(const QString &table, const QStringList &columns, bool server, const QString &before)
{
    QStringList settings;
    for (qsizetype at = 0; at < columns.size(); ++at)
        settings << before + columns[at] + QStringLiteral(" = ") + cell(table, columns[at], int(at) + 2, server);
    return settings.join(QStringLiteral(", "));
}

} // namespace

BulkUpdate::BulkUpdate(ado::Connection &connection, const QString &table, const QString &key,
                       const QStringList &columns)
    : connection_(connection)
    , asTexts_(connection.engine() == ado::Engine::PostgreSQL || connection.engine() == ado::Engine::Odbc)
    , cells_(columns.size() + 1)
{
    const QString condition = QStringLiteral(" WHERE %1.%2 = ").arg(table, key) + cell(table, key, 1, asTexts_);
    if (connection.engine() != ado::Engine::MariaDB) {
        head_ = QStringLiteral("UPDATE %1 SET %2 FROM (VALUES ").arg(table, settingsOf(table, columns, asTexts_, {}));
        tail_ = QStringLiteral(") AS v") + condition;
        return;
    }
    QStringList names;
    for (qsizetype at = 1; at <= cells_; ++at)
        names << QStringLiteral("column%1").arg(at);
    head_ = QStringLiteral("UPDATE %1, (WITH w (%2) AS (VALUES ").arg(table, names.join(QStringLiteral(", ")));
    tail_ =
        QStringLiteral(") SELECT * FROM w) AS v SET ") + settingsOf(table, columns, asTexts_, table + u'.') + condition;
}

void BulkUpdate::add(qint64 key, const QVariantList &values)
{
    Q_ASSERT(values.size() + 1 == cells_);
    pending_ << key;
    pending_ += values;
    if (pending_.size() == RowsPerUpdate * cells_)
        send();
}

void BulkUpdate::finish()
{
    if (!pending_.isEmpty())
        send();
}

void BulkUpdate::send()
{
    ado::Command command = connection_.command();
    command << head_;
    for (qsizetype at = 0; at < pending_.size(); ++at) {
        const QVariant value = ado::parameter(pending_[at]);
        command << (at == 0 ? u"(" : at % cells_ == 0 ? u"),(" : u",");
        command.value(asTexts_ && value.isValid() ? QVariant(value.toString()) : value);
    }
    command << u")" << tail_;
    connection_.Execute(command);
    pending_.clear();
}

} // namespace rows
