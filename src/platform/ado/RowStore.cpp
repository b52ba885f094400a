#include "platform/ado/RowStore.h"

#include "platform/ado/ColumnValue.h"
#include "platform/ado/ConnectionPrivate.h"

#include <QMultiHash>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace ado {

namespace {

constexpr int blockRows = 64; ///< about what a grid shows

/// For a row that is known by its content. One that a list gave is no other list's.
int nextNumber()
{
    static int last = 0;
    return ++last;
}

} // namespace

Driver &RowStore::driverOf(const Connection &connection)
{
    return *connection.layer().driver;
}

std::vector<Command> RowStore::readings(const Driver &driver, const SelectShape &shape, bool keyset)
{
    if (!keyset || shape.key().isEmpty())
        return {driver.command() << shape.all()};
    return {driver.command() << shape.keys(), driver.command() << shape.rows() << u" WHERE " << shape.keyName()
                                                               << u" IN (" << shape.someKeys(blockRows) << u")"};
}

RowStore::RowStore(const ConnectionPtr &connection, const SelectShape &shape, bool keyset, const RowStore *before,
                   Extent extent)
    : connection_(connection)
    , shape_(shape)
{
    if (Inside *const now = inside())
        now->loaded = true;
    if (keyset && !shape_.key().isEmpty()) {
        Connection::Private &layer = connection_->layer();
        const std::vector<Command> next = readings(*layer.driver, shape_, true);
        if (!layer.driver->isForeseen(next.front()))
            layer.driver->foresee(next);
        loadKeys(before);
        if (!shape_.joined() || !keysRepeat()) {
            if (layer.driver->isForeseen(next.back()))
                keepRows(layer.read(next.back()), unreadOfBlock(0));
            readBlock(0);
            return;
        }
    }
    if (extent == Extent::FirstRows && loadFirstRows())
        return;
    extent_ = extent == Extent::Kept ? Extent::Kept : Extent::All;
    if (extent == Extent::Kept && takeOverKept())
        return;
    byContent_ = keyset && shape_.key().isEmpty() && shape_.showsRows();
    loadWhole(connection_->layer().driver->command() << shape_.all(), before);
    if (byContent_)
        numberRows(before);
    if (extent == Extent::Kept)
        keepForNext();
}

void RowStore::loadKeys(const RowStore *before)
{
    keyColumn_ = 0;
    if (before && before->moment_
        && takeOver({shape_.whole(), before->cells_, before->order_, *before->moment_},
                    shape_.keys() + QStringLiteral(" WHERE ") + shape_.keyName(), keyOrder()))
        return;
    Connection::Private &layer = connection_->layer();
    if (shape_.isWholeTable())
        moment_ = layer.driver->momentOf(*shape_.base());
    cells_ = std::make_shared<CellTable>(layer.read(layer.driver->command() << shape_.keys()));
    orderLoaded(keyOrder(), before);
}

void RowStore::loadWhole(const Command &select, const RowStore *before)
{
    cells_ = std::make_shared<CellTable>(connection_->layer().read(select));
    whole_ = true;
    knowColumns();
    const std::optional<KeptRows> &kept = connection_->layer().kept;
    const bool isAsKept =
        extent_ == Extent::Kept && kept && kept->statement == shape_.whole() && isAsBefore(kept->cells, kept->order);
    if (!isAsKept && !(before && before->whole_ && isAsBefore(before->cells_, before->order_)))
        orderLoaded(orderColumns(*cells_), before);
    if (byContent_ || (keyColumn_ >= 0 && (shape_.joined() || shape_.key().isEmpty()) && keysRepeat()))
        keyColumn_ = -1;
    if (keyColumn_ >= 0 && shape_.key().isEmpty())
        shape_.setKey({shape_.base()->key, shape_.base()->key});
}

RowImage RowStore::lastRead(Physical row) const
{
    const auto read = read_.find(row);
    return read != read_.end() ? read->second : RowImage{cells_, static_cast<int>(row)};
}

void RowStore::numberRows(const RowStore *before)
{
    const auto content = [](const RowImage &row) {
        QStringList cells;
        for (int column = 0; column < row.table->columnCount(); ++column) {
            const QVariant cell = row.raw(column);
            cells << QString::number(cell.typeId()) + cell.toString();
        }
        return cells;
    };
    QMultiHash<QStringList, int> known;
    for (int row = 0; before && before->byContent_ && row < before->count(); ++row)
        known.insert(content(before->lastRead(before->order_.at(row))), before->key(row).toInt());
    for (int row = 0; row < cells_->rowCount(); ++row) {
        const auto same = known.find(content({cells_, row}));
        numbers_.push_back(same != known.end() ? *same : nextNumber());
        if (same != known.end())
            known.erase(same);
    }
}

void RowStore::orderLoaded(std::span<const OrderColumn> columns, const RowStore *before)
{
    KnownOrders &known = connection_->layer().orders;
    const QString statement = whole_ ? shape_.all() : shape_.keys();
    order_.loadLater(
        RowOrdering(cells_, columns, keyColumn_,
                    guessedOrder(before && before->hasAllRows() ? before->order_.loaded() : known.of(statement),
                                 cells_->rowCount())),
        [&known, statement](const std::vector<Physical> &order) { known.remember(statement, order); });
}

std::vector<RowStore::Physical> RowStore::guessedOrder(const std::vector<Physical> &before, int rows)
{
    const auto count = static_cast<Physical>(rows);
    std::vector<Physical> guess;
    guess.reserve(count);
    std::vector<bool> there(count);
    for (Physical row : before) {
        if (row < count) {
            guess.push_back(row);
            there[row] = true;
        }
    }
    for (Physical row = 0; row < count; ++row) {
        if (!there[row])
            guess.push_back(row);
    }
    return guess;
}

bool RowStore::keysRepeat() const
{
    std::vector<std::int64_t> numbers;
    std::vector<QString> others;
    for (int row = 0; row < cells_->rowCount(); ++row) {
        const CellTable::Cell cell = cells_->cell(row, keyColumn_);
        if (cell.kind == CellTable::Kind::Integer)
            numbers.push_back(cell.integer);
        else
            others.push_back(cells_->raw(row, keyColumn_).toString());
    }
    std::ranges::sort(numbers);
    std::ranges::sort(others);
    return std::ranges::adjacent_find(numbers) != numbers.end() || std::ranges::adjacent_find(others) != others.end();
}

QVariant RowStore::rawKey(Physical row) const
{
    const auto loaded = static_cast<Physical>(cells_->rowCount());
    return row < loaded ? cells_->raw(static_cast<int>(row), keyColumn_) : parameter(appended_[row - loaded]);
}

QVariant RowStore::keyOf(Physical row) const
{
    const auto loaded = static_cast<Physical>(cells_->rowCount());
    if (row >= loaded)
        return appended_[row - loaded];
    if (byContent_)
        return numbers_[row];
    return keyColumn_ < 0 ? QVariant(static_cast<int>(row)) : keyValue(*cells_, static_cast<int>(row), keyColumn_);
}

QVariant RowStore::key(int row) const
{
    return keyOf(order_.at(row));
}

int RowStore::find(const QVariant &key, int near) const
{
    // Most keys are whole numbers, and a grid asks for every row it shows.
    bool whole = false;
    const qlonglong number = key.typeId() == QMetaType::Int ? key.toLongLong(&whole) : 0;
    const auto loaded = static_cast<Physical>(cells_->rowCount());
    const auto isIt = [&](Physical row) {
        if (!whole || keyColumn_ < 0 || row >= loaded)
            return keyOf(row) == key;
        const CellTable::Cell cell = cells_->cell(static_cast<int>(row), keyColumn_);
        return cell.kind == CellTable::Kind::Integer ? cell.integer == number : keyOf(row) == key;
    };
    return order_.find(isIt, near);
}

RowImage RowStore::image(int row)
{
    const Physical physical = order_.at(row);
    if (const auto read = read_.find(physical); read != read_.end())
        return read->second;
    if (forgotten_.contains(physical))
        readRows({&physical, 1});
    else if (whole_)
        return {cells_, static_cast<int>(physical)};
    else
        readBlock(row);
    return read_.at(physical);
}

QVariant RowStore::value(int row, int column)
{
    // Reports ask for every cell of long lists that nobody writes to.
    if (whole_ && read_.empty() && forgotten_.empty())
        return cells_->value(static_cast<int>(order_.at(row)), column);
    return image(row).value(column);
}

RowImage RowStore::readAgain(int row)
{
    if (!keyed())
        return image(row);
    const Physical physical = order_.at(row);
    readRows({&physical, 1});
    return read_.at(physical);
}

/// Reads the block around the row, as far as it is not known yet. An empty set is asked too: it tells the columns.
void RowStore::readBlock(int row)
{
    const std::vector<Physical> rows = unreadOfBlock(row);
    if (!rows.empty() || columns_.empty())
        readRows(rows);
}

std::vector<RowStore::Physical> RowStore::unreadOfBlock(int row) const
{
    std::vector<Physical> rows;
    const int first = row / blockRows * blockRows;
    for (int at = first; at < std::min(first + blockRows, count()); ++at) {
        if (!read_.contains(order_.at(at)))
            rows.push_back(order_.at(at));
    }
    return rows;
}

Command RowStore::readingOf(int row) const
{
    const Physical physical = order_.at(row);
    return readingOf({&physical, 1});
}

Command RowStore::readingOf(std::span<const Physical> rows) const
{
    Command command = connection_->layer().driver->command() << shape_.rows() << u" WHERE " << shape_.keyName();
    if (rows.size() == 1) {
        command.equals(rawKey(rows.front()));
        return command;
    }
    command << u" IN (";
    for (std::size_t at = 0; at < std::max<std::size_t>(rows.size(), 1); ++at) {
        command << (at ? u", " : u"");
        command.value(rows.empty() ? QVariant() : rawKey(rows[at]));
    }
    return command << u")";
}

void RowStore::readRows(std::span<const Physical> rows)
{
    CellTable table = connection_->layer().read(readingOf(rows));
    for (Physical row : rows) {
        read_[row] = {};
        forgotten_.erase(row);
        if (Inside *const now = inside())
            now->read.insert(row);
    }
    keepRows(std::move(table), rows);
}

/// Those that were read, as far as they are wanted.
void RowStore::keepRows(CellTable rows, std::span<const Physical> among)
{
    const auto table = std::make_shared<CellTable>(std::move(rows));
    described_ = table->shareColumns(described_);
    if (columns_.empty()) {
        const auto own = table->columns().end() - (shape_.keyIsAdded() ? 1 : 0);
        columns_.assign(table->columns().begin(), own);
    }
    const int keyColumn = shape_.keyIsAdded() ? table->columnCount() - 1 : columnIndex(shape_.key());
    Inside *const now = inside();
    for (int row = 0; row < table->rowCount(); ++row) {
        const QVariant key = keyValue(*table, row, keyColumn);
        const auto owner = std::ranges::find_if(among, [&](Physical physical) { return keyOf(physical) == key; });
        if (owner == among.end())
            continue;
        read_[*owner] = {table, row};
        if (now)
            now->read.insert(*owner);
    }
}

void RowStore::remove(int row)
{
    const Physical physical = order_.at(row);
    const int loadedRow = takeOut(row);
    if (Inside *const now = inside())
        now->changes.push_back({physical, false, row, loadedRow});
}

int RowStore::takeOut(int row)
{
    const int loadedRow = order_.remove(row);
    for (int *position : positions_) {
        if (*position == row)
            *position = count();
        else if (*position > row)
            --*position;
    }
    return loadedRow;
}

void RowStore::putBack(const Change &removed)
{
    const int row = std::min(removed.row, count());
    order_.insert(row, removed.physical, removed.loadedRow);
    for (int *position : positions_) {
        if (*position >= row)
            ++*position;
    }
}

int RowStore::append(const QVariant &key)
{
    const auto physical = static_cast<Physical>(cells_->rowCount() + static_cast<int>(appended_.size()));
    appended_.push_back(key);
    for (int *position : positions_) {
        if (*position == count())
            ++*position; // behind the last row still
    }
    if (Inside *const now = inside())
        now->changes.push_back({physical, true});
    order_.append(physical);
    return count() - 1;
}

int RowStore::append(const RowImage &written)
{
    const auto physical = static_cast<Physical>(cells_->rowCount() + static_cast<int>(appended_.size()));
    read_[physical] = written;
    return append(QVariant(nextNumber()));
}

void RowStore::rewrite(int row, const RowImage &written)
{
    const Physical physical = order_.at(row);
    if (Inside *const now = inside())
        now->rewritten.emplace(physical, lastRead(physical));
    read_[physical] = written;
}

RowStore::Inside *RowStore::inside()
{
    const Connection::Private &layer = connection_->layer();
    const quint64 transaction = layer.startedSerial();
    if (transaction == 0)
        return nullptr;
    std::erase_if(inside_, [&](const Inside &one) { return one.transaction < layer.outermostSerial(); }); // were saved
    if (inside_.empty() || inside_.back().transaction != transaction)
        inside_.emplace_back().transaction = transaction;
    return &inside_.back();
}

const RowStore::Undone &RowStore::undo(quint64 transaction)
{
    if (undone_.transaction == transaction)
        return undone_;
    undone_ = {};
    undone_.transaction = transaction;
    std::unordered_set<Physical> touched, read;
    for (; !inside_.empty() && inside_.back().transaction >= transaction; inside_.pop_back()) {
        const Inside &before = inside_.back();
        undone_.loaded = undone_.loaded || before.loaded;
        undone_.membership = undone_.membership || !before.changes.empty();
        for (const auto &[physical, image] : before.rewritten) {
            read_[physical] = image;
            touched.insert(physical);
        }
        read.insert(before.read.begin(), before.read.end());
        for (auto change = before.changes.rbegin(); change != before.changes.rend(); ++change) {
            const int row = order_.find([&](Physical physical) { return physical == change->physical; });
            if (change->added && row >= 0)
                takeOut(row);
            else if (!change->added && row < 0)
                putBack(*change);
        }
    }
    touched.insert(read.begin(), read.end());
    for (Physical physical : read) {
        if (read_.erase(physical) > 0 && whole_)
            forgotten_.insert(physical);
    }
    for (int row = 0; row < count(); ++row) {
        if (touched.contains(order_.at(row)))
            undone_.rows.push_back(row);
    }
    return undone_;
}

void RowStore::sort(std::span<const OrderColumn> columns)
{
    if (columns.empty())
        return order_.asLoaded();
    readForgotten();
    const auto rows = read_.empty() ? cells_ : std::make_shared<const CellTable>(asLastRead());
    order_.sort(RowOrdering(rows, columns, keyColumn_).all());
}

void RowStore::readForgotten()
{
    const std::vector<Physical> rows(forgotten_.begin(), forgotten_.end());
    if (!rows.empty())
        readRows(rows);
}

/// The rows that were read whole, with those that were read again since.
CellTable RowStore::asLastRead() const
{
    CellTable table(*cells_);
    for (const auto &[row, image] : read_) {
        if (image.gone())
            continue;
        for (int column = 0; column < static_cast<int>(columns_.size()); ++column)
            table.replace(static_cast<int>(row), column, *image.table, image.row);
    }
    return table;
}

void RowStore::drop()
{
    cells_ = std::make_shared<CellTable>(cells_->columns());
    appended_.clear();
    order_.load({});
    read_.clear();
    forgotten_.clear();
    inside_.clear();
}

} // namespace ado
