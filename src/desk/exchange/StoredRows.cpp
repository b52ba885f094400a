#include "desk/exchange/StoredRows.h"

#include "desk/rows/ExactValue.h"
#include "desk/schema/Statements.h"
#include "platform/runtime/Conversions.h"

#include <algorithm>

namespace exchange {

namespace {

schema::Holds holdsOf(const Field &field)
{
    switch (field.reads) {
    case Reads::Money:
        return schema::Holds::Money;
    case Reads::Date:
        return schema::Holds::Date;
    case Reads::Flag:
        return schema::Holds::Flag;
    default:
        return schema::Holds::Text;
    }
}

} // namespace

StoredRows::StoredRows(ado::Connection &connection, const Subject &subject, const std::vector<const Field *> &fields)
{
    QStringList columns{QString::fromLatin1(subject.key)};
    std::size_t name = 0;
    for (std::size_t at = 0; at < fields.size(); ++at) {
        columns << QString::fromLatin1(fields[at]->column);
        if (qstrcmp(fields[at]->column, subject.name) == 0)
            name = at;
    }
    const QString order = *subject.group ? QString::fromLatin1(subject.group) + QStringLiteral(", ") : QString();
    const QList<QVariantList> rows = schema::rowsOf(
        connection, QStringLiteral("SELECT %1 FROM %2 ORDER BY %3%4, %5")
                        .arg(columns.join(QStringLiteral(", ")), QString::fromLatin1(subject.table), order,
                             QString::fromLatin1(subject.name), QString::fromLatin1(subject.key)));
    for (const QVariantList &row : rows) {
        StoredRow stored{row[0].toLongLong(), {}};
        for (std::size_t at = 0; at < fields.size(); ++at)
            stored.values << rows::exactValue(row[qsizetype(at) + 1], holdsOf(*fields[at]));
        byName_.insert(runtime::Trim(stored.values[qsizetype(name)].toString()), rows_.size());
        rows_.push_back(std::move(stored));
    }
}

std::vector<const StoredRow *> StoredRows::called(const QString &name) const
{
    std::vector<const StoredRow *> found;
    for (auto [at, end] = byName_.equal_range(name); at != end; ++at)
        found.push_back(&rows_[*at]);
    std::ranges::sort(found, {}, &StoredRow::key);
    return found;
}

} // namespace exchange
