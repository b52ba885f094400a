// A list of a whole table that is read anew: only the rows that were written since are read.
#include "platform/ado/ConnectionPrivate.h"
#include "platform/ado/RowStore.h"

#include <algorithm>
#include <utility>

namespace ado {

std::vector<OrderColumn> RowStore::keyOrder() const
{
    std::vector<OrderColumn> columns;
    for (const OrderItem &item : shape_.order())
        columns.push_back({static_cast<int>(columns.size()) + 1, item.descending});
    return columns;
}

/// The same as of all rows, of those that have one of the keys.
CellTable RowStore::readKeys(std::span<const std::int64_t> keys) const
{
    Connection::Private &layer = connection_->layer();
    Command command = layer.driver->command() << shape_.keys() << u" WHERE " << shape_.keyName() << u" IN (";
    QStringView separator;
    for (const std::int64_t key : keys) {
        command << std::exchange(separator, u", ");
        command.value(QVariant::fromValue<qlonglong>(key));
    }
    return layer.read(command << u")");
}

/// The rows of those keys, as they were read, in the order of the keys; where there is none, the number of all rows.
std::vector<RowStore::Physical> RowStore::whereKeysStand(std::span<const std::int64_t> keys) const
{
    const auto all = static_cast<Physical>(cells_->rowCount());
    std::vector<Physical> rows(keys.size(), all);
    for (Physical row = 0; row < all; ++row) {
        const std::int64_t key = cells_->cell(static_cast<int>(row), keyColumn_).integer;
        const auto place = std::ranges::lower_bound(keys, key);
        if (place != keys.end() && *place == key)
            rows[static_cast<std::size_t>(place - keys.begin())] = row;
    }
    return rows;
}

/// Takes the list over as it was before and reads only what was written since. False, and the list is to be read whole,
/// where that would not be certain to give the same.
///
/// Whoever else has written shows in the moments. Every row that this session inserted or updated is in its log and is read
/// again; a row that it deleted may not be. So what is here afterwards is all that the table holds, and perhaps rows that
/// are gone: there are none of these when their number is the table's.
bool RowStore::takeOver(const RowStore &before)
{
    constexpr std::size_t few = 64;
    Connection::Private &layer = connection_->layer();
    const auto written = before.moment_ ? layer.driver->writtenSince(*before.moment_) : std::nullopt;
    if (!written || written->size() > few)
        return false;
    const CellTable fresh = readKeys(*written);
    const CellTable count = layer.read(layer.driver->command() << u"SELECT COUNT(*) FROM " << shape_.base()->name);
    const auto now = layer.driver->momentOf(*shape_.base());
    if (!now || !before.moment_->onlyLoggedUntil(*now))
        return false;

    const std::vector<Physical> stood = before.whereKeysStand(*written);
    const auto loaded = static_cast<Physical>(before.cells_->rowCount());
    std::vector<Physical> order = before.loadedOrder_;
    std::erase_if(order, [&](Physical row) { return row >= loaded || std::ranges::find(stood, row) != stood.end(); });
    std::shared_ptr<const CellTable> cells = before.cells_;
    std::shared_ptr<CellTable> changed;
    std::vector<Physical> placed;
    for (int row = 0; row < fresh.rowCount(); ++row) {
        const auto key = std::ranges::lower_bound(*written, fresh.cell(row, keyColumn_).integer) - written->begin();
        Physical place = stood[static_cast<std::size_t>(key)];
        if (place == loaded)
            place = static_cast<Physical>(cells->rowCount());
        if (place >= loaded || !cells->sameRow(static_cast<int>(place), fresh, row)) {
            if (!changed)
                cells = changed = std::make_shared<CellTable>(*before.cells_);
            changed->takeRow(static_cast<int>(place), fresh, row);
        }
        placed.push_back(place);
    }
    if (qlonglong(order.size() + placed.size()) != count.raw(0, 0).toLongLong())
        return false;
    placeRows(*cells, keyOrder(), keyColumn_, order, placed);
    cells_ = std::move(cells);
    order_ = std::move(order);
    loadedOrder_ = order_;
    moment_ = now;
    return true;
}

} // namespace ado
