#pragma once

#include "platform/ado/CellTable.h"
#include "platform/ado/Connection.h"
#include "platform/ado/Driver.h"
#include "platform/ado/KeptRows.h"
#include "platform/ado/RowSequence.h"
#include "platform/ado/SelectShape.h"

#include <QVariant>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ado {

/// One row as it was read at one moment; without a table it was gone.
struct RowImage
{
    std::shared_ptr<const CellTable> table;
    int row = 0;

    bool gone() const { return !table; }
    QVariant value(int column) const { return gone() ? QVariant() : table->value(row, column); }
    QVariant raw(int column) const { return gone() ? QVariant() : table->raw(row, column); }
};

/// The rows of one opened statement, shared by a recordset and its clones.
///
/// A keyset holds the keys of its rows and reads the rows themselves when they are asked for, a screenful at a time; a
/// statement whose rows have no key is read whole. Rows to be written whose table has no key are read whole, too, and known
/// by their content: each gets a number, which it keeps when the list is read again and it is as it was.
class RowStore
{
public:
    enum class Extent { All, FirstRows, Kept };

    /// `before`: the same list as it was read before, if it was; most rows will stand where they stood.
    /// FirstRows: of a long list that is in order no more than what a screen shows, as it stands at its beginning.
    /// Kept: all, taken over from the list that was read before on this connection where that is certain to be the same.
    RowStore(const ConnectionPtr &connection, const SelectShape &shape, bool keyset, const RowStore *before = nullptr,
             Extent extent = Extent::All);

    static Driver &driverOf(const Connection &connection);
    /// What it reads at its beginning, where the engine looks ahead: all, or the keys, and rows of which the server tells
    /// those that it finds first, of most lists all.
    static std::vector<Command> readings(const Driver &driver, const SelectShape &shape, bool keyset);

    const SelectShape &shape() const { return shape_; }
    const std::vector<ResultColumn> &columns() const { return columns_; } ///< the statement's own
    int columnIndex(const QString &field) const;
    bool keyed() const { return shape_.base() != nullptr && keyColumn_ >= 0; }
    bool readWhole() const { return whole_; }
    bool byContent() const { return byContent_; }
    bool hasAllRows() const { return extent_ != Extent::FirstRows; }

    int count() const { return order_.size(); }
    /// The key, or a number when rows have no key.
    QVariant key(int row) const;
    /// -1 when absent; `near`: where it may stand.
    int find(const QVariant &key, int near = 0) const;

    /// The row as it was last read.
    RowImage image(int row);
    /// One value of it.
    QVariant value(int row, int column);
    /// Reads the row from the server; unkeyed rows stay as they are.
    RowImage readAgain(int row);
    /// What that asks the server for.
    Command readingOf(int row) const;

    /// Whoever stands on the row stands behind the last one afterwards.
    void remove(int row);
    int append(const QVariant &key);
    // Of rows that are known by their content: as they were written.
    int append(const RowImage &written);
    void rewrite(int row, const RowImage &written);
    void sort(std::span<const OrderColumn> columns); ///< none: as loaded
    /// Forgets all rows, for those that still look at them.
    void drop();

    /// What a rolled back transaction left to be shown anew.
    struct Undone
    {
        quint64 transaction = 0;
        bool loaded = false;     ///< the list itself was opened in it
        bool membership = false; ///< rows came or went
        std::vector<int> rows;   ///< to be read again
    };
    /// Forgets what was read in the transaction and those within it, takes out the rows that were added there and puts the deleted ones back.
    /// Everybody who shares the rows may call it: it is done once.
    const Undone &undo(quint64 transaction);

    /// Row numbers that follow their row.
    void attach(int *position) { positions_.push_back(position); }
    void detach(int *position) { std::erase(positions_, position); }

private:
    using Physical = RowSequence::Row;

    /// A row that was added or removed.
    struct Change
    {
        Physical physical;
        bool added;
        int row = 0;       ///< where a removed one stood
        int loadedRow = 0; ///< the same in the order of loading
    };
    /// What happened inside a transaction that the server holds.
    struct Inside
    {
        quint64 transaction = 0;
        bool loaded = false;
        std::unordered_set<Physical> read;
        std::unordered_map<Physical, RowImage> rewritten; ///< as they were before
        std::vector<Change> changes;
    };

    Inside *inside();     ///< null outside of a transaction
    int takeOut(int row); ///< where it stood as loaded
    void putBack(const Change &removed);
    void loadKeys(const RowStore *before);
    bool takeOver(const KeptRows &before, const QString &rowsOfKeys, std::span<const OrderColumn> columns);
    qlonglong number(const QString &question) const;
    CellTable readKeys(const QString &rowsOfKeys, std::span<const std::int64_t> keys) const;
    std::vector<Physical> whereKeysStand(const CellTable &cells, std::span<const std::int64_t> keys) const;
    std::vector<OrderColumn> keyOrder() const;
    void loadWhole(const Command &select, const RowStore *before);
    void knowColumns();
    bool takeOverKept();
    void keepForNext() const;
    bool isAsBefore(const std::shared_ptr<const CellTable> &cells, const RowSequence &order);
    bool loadFirstRows();
    void numberRows(const RowStore *before);
    RowImage lastRead(Physical row) const;
    void orderLoaded(std::span<const OrderColumn> columns, const RowStore *before);
    /// Where rows of a list of that length would stand if nothing had changed since they stood so.
    static std::vector<Physical> guessedOrder(const std::vector<Physical> &before, int rows);
    bool keysRepeat() const;
    std::vector<OrderColumn> orderColumns(const CellTable &table) const;
    void readBlock(int row);
    std::vector<Physical> unreadOfBlock(int row) const;
    void keepRows(CellTable rows, std::span<const Physical> among);
    CellTable asLastRead() const;
    void readForgotten();
    Command readingOf(std::span<const Physical> rows) const;
    void readRows(std::span<const Physical> rows);
    QVariant rawKey(Physical row) const;
    QVariant keyOf(Physical row) const;

    ConnectionPtr connection_;
    SelectShape shape_;
    Extent extent_ = Extent::All;
    bool whole_ = false;
    bool byContent_ = false;
    std::vector<int> numbers_; ///< of rows that are known by their content, as they were loaded
    int keyColumn_ = -1;       ///< in cells_
    std::shared_ptr<const CellTable>
        cells_;                         ///< all columns, or keys and order columns; more rows than there are, perhaps
    std::vector<ResultColumn> columns_; ///< the statement's own
    ResultColumns described_;           ///< those of the rows read last, the key among them
    std::optional<TableMoment> moment_; ///< before the keys were read, where what happens after it can be told
    RowSequence order_;
    std::vector<QVariant> appended_; ///< keys of rows behind those of cells_
    std::unordered_map<Physical, RowImage> read_;
    std::unordered_set<Physical> forgotten_; ///< read whole, and again in a transaction that was rolled back
    std::vector<int *> positions_;
    std::vector<Inside> inside_; ///< in the order of its happening; the inner ones have the higher numbers
    Undone undone_;
};

} // namespace ado
