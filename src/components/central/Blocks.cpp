#include "components/central/Blocks.h"

#include <algorithm>

namespace central {

namespace {

constexpr qsizetype rowsAtOnce = 2'000; // a server may read the whole table for each block; engines bound the values

} // namespace

Blocks::Blocks(ado::Connection &connection, QString before, QString behind, const Progress &progress)
    : connection_(connection)
    , before_(std::move(before))
    , behind_(std::move(behind))
    , progress_(progress)
{
}

void Blocks::add(const QStringList &row)
{
    rows_.push_back(row);
}

void Blocks::finish()
{
    const auto all = qsizetype(rows_.size());
    for (qsizetype from = 0; from < all; from += rowsAtOnce) {
        const qsizetype to = std::min(all, from + rowsAtOnce);
        send(from, to);
        if (progress_)
            progress_(to, all);
    }
}

void Blocks::send(qsizetype from, qsizetype to)
{
    ado::Command command = connection_.command();
    command << before_;
    for (qsizetype at = from; at < to; ++at) {
        command << (at == from ? u"(" : u",(");
        bool first = true;
        for (const QString &value : rows_[std::size_t(at)]) {
            command << (first ? u"" : u",");
            command.value(value.isNull() ? QVariant() : QVariant(value));
            first = false;
        }
        command << u")";
    }
    connection_.Execute(command << behind_);
}

} // namespace central
