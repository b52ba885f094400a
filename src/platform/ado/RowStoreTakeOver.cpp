// A list of one table that was read before: only the rows that were written since are read.
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

/// The one of an answer.
qlonglong RowStore::number(const QString &question) const
{
    Connection::Private &layer = connection_->layer();
    return layer.read(layer.driver->command() << question).raw(0, 0).toLongLong();
}

/// The same as of all rows, of those that have one of the keys.
CellTable RowStore::readKeys(const QString &rowsOfKeys, std::span<const std::int64_t> keys) const
{
    Connection::Private &layer = connection_->layer();
    Command command = layer.driver->command() << rowsOfKeys << u" IN (";
    QStringView separator;
    for (const std::int64_t key : keys) {
        command << std::exchange(separator, u", ");
        command.value(QVariant::fromValue<qlonglong>(key));
    }
    return layer.read(command << u")");
}

/// The rows of those keys, in the order of the keys; where there is none, the number of all rows.
std::vector<RowStore::Physical> RowStore::whereKeysStand(const CellTable &cells,
                                                         std::span<const std::int64_t> keys) const
{
    const auto all = static_cast<Physical>(cells.rowCount());
    std::vector<Physical> rows(keys.size(), all);
    for (Physical row = 0; row < all; ++row) {
        const std::int64_t key = cells.cell(static_cast<int>(row), keyColumn_).integer;
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
/// again; a row that it deleted may not be. So what is here afterwards is all that is on the list, and perhaps rows that
/// are gone: there are none of these when their number is the list's. Where no row was written at all, it is the table's
/// number that tells.
bool RowStore::takeOver(const KeptRows &before, const QString &rowsOfKeys, std::span<const OrderColumn> columns)
{
    constexpr std::size_t few = 64;
    Connection::Private &layer = connection_->layer();
    const auto written = layer.driver->writtenSince(*before.moment);
    if (!written || written->size() > few)
        return false;
    const CellTable fresh = readKeys(rowsOfKeys, *written);
    const qlonglong there =
        written->empty() ? number(shape_.countInTable()) - before.notListed : number(shape_.count());
    const auto now = layer.driver->momentOf(*shape_.base());
    if (!now || !before.moment->onlyLoggedUntil(*now))
        return false;

    // Most often nothing was written, and no row has to be looked at.
    const std::vector<Physical> stood =
        written->empty() ? std::vector<Physical>() : whereKeysStand(*before.cells, *written);
    const auto loaded = static_cast<Physical>(before.cells->rowCount());
    std::vector<Physical> order = before.order.loaded();
    std::erase_if(order, [&](Physical row) { return row >= loaded || std::ranges::find(stood, row) != stood.end(); });
    std::shared_ptr<const CellTable> cells = before.cells;
    std::shared_ptr<CellTable> changed;
    std::vector<Physical> placed;
    for (int row = 0; row < fresh.rowCount(); ++row) {
        const auto key = std::ranges::lower_bound(*written, fresh.cell(row, keyColumn_).integer) - written->begin();
        Physical place = stood[static_cast<std::size_t>(key)];
        if (place == loaded)
            place = static_cast<Physical>(cells->rowCount());
        if (place >= loaded || !cells->sameRow(static_cast<int>(place), fresh, row)) {
            if (!changed)
                cells = changed = std::make_shared<CellTable>(*before.cells);
            changed->takeRow(static_cast<int>(place), fresh, row);
        }
        placed.push_back(place);
    }
    if (static_cast<std::size_t>(there) != order.size() + placed.size())
        return false;
    placeRows(*cells, columns, keyColumn_, order, placed);
    cells_ = std::move(cells);
    order_.load(std::move(order));
    moment_ = now;
    return true;
}

/// Of a list that is read whole. Where it has to be, the moment of now is known afterwards, if one can be told.
bool RowStore::takeOverKept()
{
    if (!shape_.tellsRowsByThemselves() || !shape_.base()->keyIsTold)
        return false;
    Connection::Private &layer = connection_->layer();
    if (layer.kept && layer.kept->moment && layer.kept->statement == shape_.whole()) {
        cells_ = layer.kept->cells;
        knowColumns();
        // Sort() would bring back a row that is not on the list any more.
        whole_ = takeOver(*layer.kept, shape_.allAmong(), orderColumns(*cells_)) && cells_->rowCount() == count();
    }
    if (whole_)
        keepForNext();
    else
        moment_ = layer.driver->momentOf(*shape_.base());
    return whole_;
}

void RowStore::keepForNext() const
{
    connection_->layer().kept = KeptRows{shape_.whole(), cells_, order_.likeLoaded(), moment_,
                                         moment_ ? number(shape_.countInTable()) - count() : 0};
}

/// Read whole, a list is most often what it was: then neither its rows nor their order are made once more.
bool RowStore::isAsBefore(const std::shared_ptr<const CellTable> &cells, const RowSequence &order)
{
    if (!cells || order.size() != cells->rowCount() || !cells->isSame(*cells_))
        return false;
    cells_ = cells;
    order_ = order.likeLoaded();
    return true;
}

} // namespace ado
