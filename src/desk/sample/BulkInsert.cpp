#include "desk/sample/BulkInsert.h"

#include "platform/runtime/RuntimeError.h"

#include <QSqlError>

namespace sample {

namespace {

constexpr qsizetype RowsPerBlock = 50;

void check(bool done, const QSqlQuery &query)
{
    if (!done)
        throw runtime::RuntimeError(runtime::ErrorNumber::Database,
                                    QStringLiteral("자료를 쓰지 못했습니다.\n") + query.lastError().text());
}

} // namespace

BulkInsert::BulkInsert(const QSqlDatabase &database, const QString &table, const QStringList &columns)
    : database_(database)
    , table_(table)
    , columns_(columns)
    , fullBlock_(database)
{
    check(fullBlock_.prepare(statement(RowsPerBlock)), fullBlock_);
    pending_.reserve(RowsPerBlock * columns_.size());
}

void BulkInsert::add(std::initializer_list<QVariant> row)
{
    Q_ASSERT(qsizetype(row.size()) == columns_.size());
    pending_.append(row);
    if (pending_.size() == RowsPerBlock * columns_.size())
        send(fullBlock_);
}

void BulkInsert::finish()
{
    if (!pending_.isEmpty()) {
        QSqlQuery rest(database_);
        check(rest.prepare(statement(pending_.size() / columns_.size())), rest);
        send(rest);
    }
}

void BulkInsert::send(QSqlQuery &query)
{
    for (qsizetype index = 0; index < pending_.size(); ++index)
        query.bindValue(int(index), pending_[index]);
    check(query.exec(), query);
    pending_.clear();
}

QString BulkInsert::statement(qsizetype rows) const
{
    const QString row =
        QStringLiteral("(%1)").arg(QStringList(columns_.size(), QStringLiteral("?")).join(QLatin1Char(',')));
    return QStringLiteral("INSERT INTO %1 (%2) VALUES %3")
        .arg(table_, columns_.join(QLatin1Char(',')), QStringList(rows, row).join(QLatin1Char(',')));
}

} // namespace sample
