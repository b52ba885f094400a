#include "desk/rows/BulkInsert.h"

#include "platform/ado/ColumnValue.h"

namespace rows {

namespace {

constexpr qsizetype RowsPerBlock = 50;

} // namespace

BulkInsert::BulkInsert(ado::Connection &connection, const QString &table, const QStringList &columns)
    : connection_(connection)
    , table_(table)
    , columns_(columns)
{
    pending_.reserve(RowsPerBlock * columns_.size());
}

void BulkInsert::add(const QVariantList &row)
{
    Q_ASSERT(row.size() == columns_.size());
    pending_.append(row);
    if (pending_.size() == RowsPerBlock * columns_.size())
        send();
}

void BulkInsert::finish()
{
    if (!pending_.isEmpty())
        send();
}

void BulkInsert::send()
{
    ado::Command command = connection_.command();
    command << u"INSERT INTO " << table_ << u" (" << columns_.join(u',') << u")";
    if (const auto engine = connection_.engine(); engine == ado::Engine::PostgreSQL || engine == ado::Engine::Odbc)
        command << u" OVERRIDING SYSTEM VALUE"; // of a key that the clinic's own table lets nobody give
    command << u" VALUES ";
    for (qsizetype at = 0; at < pending_.size(); ++at) {
        const bool first = at % columns_.size() == 0;
        command << (at == 0 ? u"(" : first ? u"),(" : u",");
        command.value(ado::parameter(pending_[at]));
    }
    command << u")";
    connection_.Execute(command);
    pending_.clear();
}

} // namespace rows
