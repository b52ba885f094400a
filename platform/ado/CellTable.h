#pragma once

#include "platform/ado/TableRegistry.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QVariant>

#include <cstdint>
#include <string>
#include <vector>

namespace ado {

/// One column of a result.
struct ResultColumn
{
    QString name;                       ///< in the registry's or the statement's spelling
    const Column *registered = nullptr; ///< null for a column that the system's tables do not have
    bool numeric = false;               ///< what the engine says; read for unregistered columns that come as text
};

/// Rows as they come from the server: cells of fixed size, and all texts in one UTF-8 buffer. A list of a hundred thousand
/// products is two allocations; values are made when somebody asks.
class CellTable
{
public:
    enum class Kind : std::uint8_t { Null, Integer, Real, Text };

    struct Cell
    {
        union {
            std::int64_t integer;
            double real;
            std::size_t offset;
        };
        std::uint32_t length;
        Kind kind;
    };

    explicit CellTable(std::vector<ResultColumn> columns = {});

    const std::vector<ResultColumn> &columns() const { return columns_; }
    std::vector<ResultColumn> &columns() { return columns_; }
    int columnCount() const { return static_cast<int>(columns_.size()); }
    int rowCount() const { return columns_.empty() ? 0 : static_cast<int>(cells_.size() / columns_.size()); }
    void reserveRows(int rows);

    void addNull();
    void addInteger(std::int64_t value);
    void addReal(double value);
    void addText(const char *utf8, std::size_t length);

    /// Takes the cell of that column from a row of another table.
    void replace(int row, int column, const CellTable &source, int sourceRow);

    const Cell &cell(int row, int column) const
    {
        return cells_[static_cast<std::size_t>(row) * columns_.size() + static_cast<std::size_t>(column)];
    }
    QByteArrayView text(const Cell &cell) const { return {texts_.data() + cell.offset, static_cast<qsizetype>(cell.length)}; }

    /// The value in the column's type; raises TypeMismatch or Overflow when the cell does not hold one.
    QVariant value(int row, int column) const;
    /// The cell as it came, to be sent back to the server: invalid, qlonglong, double or QString.
    QVariant raw(int row, int column) const;

private:
    std::vector<ResultColumn> columns_;
    std::vector<Cell> cells_;
    std::string texts_;
};

} // namespace ado
