#pragma once

#include "platform/ado/TableRegistry.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QVariant>

#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

namespace ado {

/// One column of a result.
struct ResultColumn
{
    QString name;                       ///< in the registry's or the statement's spelling
    const Column *registered = nullptr; ///< null for a column that the system's tables do not have
    bool numeric = false;               ///< what the engine says; read for unregistered columns that come as text

    bool operator==(const ResultColumn &) const = default;
};

using ResultColumns = std::shared_ptr<const std::vector<ResultColumn>>;

/// UTF-8 texts one behind the other, in blocks that never move.
class TextBlocks
{
public:
    TextBlocks() = default;
    /// The copy looks at the same texts and adds its own elsewhere.
    TextBlocks(const TextBlocks &other)
        : blocks_(other.blocks_)
    {
    }
    TextBlocks(TextBlocks &&) = default;
    TextBlocks &operator=(TextBlocks &&) = default;
    ~TextBlocks() = default;

    const char *add(const char *utf8, std::size_t length)
    {
        if (length > room_ || !free_)
            addBlock(length);
        char *const text = free_;
        if (length > 0)
            std::memcpy(text, utf8, length);
        free_ += length;
        room_ -= length;
        return text;
    }

private:
    void addBlock(std::size_t length);

    std::vector<std::shared_ptr<char[]>> blocks_;
    char *free_ = nullptr; ///< in the last block
    std::size_t room_ = 0;
    std::size_t blockSize_ = 0;
};

class HeldRows;

/// Rows as they come from the server: cells of fixed size and their texts, both in blocks that are filled once and never
/// moved, however long the list grows, or what a client library has made of them. Values are made when somebody asks.
class CellTable
{
public:
    enum class Kind : std::uint8_t { Null, Integer, Real, Text };

    struct Cell
    {
        union
        {
            std::int64_t integer;
            double real;
            const char *text;
        };
        std::uint32_t length;
        Kind kind;
    };

    explicit CellTable(std::vector<ResultColumn> columns = {});
    /// Of rows that are not copied.
    CellTable(std::vector<ResultColumn> columns, std::shared_ptr<const HeldRows> rows);

    const std::vector<ResultColumn> &columns() const { return *columns_; }
    int columnCount() const { return static_cast<int>(columns_->size()); }
    int rowCount() const { return columns_->empty() ? 0 : static_cast<int>(count_ / columns_->size()); }
    /// Takes that description of the columns for its own where both say the same; the one it has then. Beside a row that was
    /// read alone, a description of its own would take more room than the row.
    ResultColumns shareColumns(const ResultColumns &known);

    // Here, since a report of a large shop adds some millions.
    Q_ALWAYS_INLINE void addNull() { add({{.integer = 0}, 0, Kind::Null}); }
    Q_ALWAYS_INLINE void addInteger(std::int64_t value) { add({{.integer = value}, 0, Kind::Integer}); }
    Q_ALWAYS_INLINE void addReal(double value) { add({{.real = value}, 0, Kind::Real}); }
    Q_ALWAYS_INLINE void addText(const char *utf8, std::size_t length)
    {
        add({{.text = texts_.add(utf8, length)}, static_cast<std::uint32_t>(length), Kind::Text});
    }

    /// Takes the cell of that column from a row of another table, which must outlive this one: the text stays there.
    void replace(int row, int column, const CellTable &source, int sourceRow);
    /// Takes a row of another table, texts and all, in the place of one, or behind the last.
    void takeRow(int row, const CellTable &source, int sourceRow);
    /// Whether both hold the same rows in the same columns.
    bool isSame(const CellTable &other) const;
    /// Whether both rows hold the same, cell by cell.
    bool sameRow(int row, const CellTable &other, int otherRow) const;

    Cell cell(int row, int column) const
    {
        if (isHeld())
            return heldCell(row, column);
        const std::size_t at = place(row, column);
        return blocks_[at / BlockCells][at % BlockCells];
    }
    QByteArrayView text(const Cell &cell) const { return {cell.text, static_cast<qsizetype>(cell.length)}; }

    /// The value in the column's type; raises TypeMismatch or Overflow when the cell does not hold one.
    QVariant value(int row, int column) const;
    /// The cell as it came, to be sent back to the server: invalid, qlonglong, double or QString.
    QVariant raw(int row, int column) const;

private:
    static constexpr std::size_t BlockCells = 4096; ///< 64 KB

    std::size_t place(int row, int column) const
    {
        return static_cast<std::size_t>(row) * columns_->size() + static_cast<std::size_t>(column);
    }
    Q_ALWAYS_INLINE void add(const Cell &cell)
    {
        if (count_++ % BlockCells == 0)
            addBlock();
        blocks_.back().push_back(cell);
    }
    void addBlock();
    /// Else those cells are in the blocks, and only their texts are lent.
    bool isHeld() const { return held_ && blocks_.empty(); }
    Cell heldCell(int row, int column) const;
    void takeHeldCells();

    ResultColumns columns_;
    std::vector<std::vector<Cell>> blocks_;
    std::size_t count_ = 0; ///< of cells
    TextBlocks texts_;
    std::shared_ptr<const HeldRows> held_;
};

/// The rows of an answer in the form in which a client library holds them.
class HeldRows
{
public:
    virtual ~HeldRows() = default;
    virtual int count() const = 0;
    /// A text stays as long as this does.
    virtual CellTable::Cell cell(int row, int column) const = 0;
    /// Whether every cell is the same; those are as many rows of the same columns.
    virtual bool isSame(const HeldRows &other) const = 0;
};

} // namespace ado
