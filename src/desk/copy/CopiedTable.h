#pragma once

#include "desk/schema/Tables.h"
#include "platform/ado/Connection.h"

#include <QStringList>
#include <QVariantList>

#include <functional>
#include <vector>

namespace copy {

/// A table that goes along, and which of its columns.
struct CopiedTable
{
    QString name;
    QStringList columns;
    std::vector<schema::Holds> holds;
    QString key;         ///< the rows' order, the first column that is read
    bool inPages = true; ///< the key is a number that no two rows have
    bool withKey = true; ///< it goes along
};
/// With the columns that they have there: not every clinic has all.
std::vector<CopiedTable> clinicTables(ado::Connection &source);
/// Whose own key is given anew, in the same order.
CopiedTable journalTable();

qint64 countRows(ado::Connection &connection, const CopiedTable &table);

/// Takes each row by its exact values (rows::exactValue), in the order of the key. Raises RuntimeError that names table, column
/// and key of a value that cannot go along, or that an engine of the kind `fitting` does not take.
void forEachRow(ado::Connection &connection, const CopiedTable &table, ado::Engine fitting,
                const std::function<void(const QVariantList &)> &take);

/// Tells whether two tables hold the same rows, whatever their order and engine.
class RowSum
{
public:
    void add(const QVariantList &row);
    qint64 rows() const { return rows_; }
    bool operator==(const RowSum &) const = default;

private:
    qint64 rows_ = 0;
    quint64 sum_ = 0;
};

} // namespace copy
