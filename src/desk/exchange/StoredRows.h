#pragma once

#include "desk/exchange/Subject.h"
#include "platform/ado/Connection.h"

#include <QHash>

namespace exchange {

/// A row of the database as a list is compared with it.
struct StoredRow
{
    qint64 key = 0;
    QVariantList values; ///< of the fields, as valueOf reads them
};

/// The rows of a subject, found by name.
class StoredRows
{
public:
    /// `fields` are read.
    StoredRows(ado::Connection &connection, const Subject &subject, const std::vector<const Field *> &fields);

    std::vector<const StoredRow *> called(const QString &name) const;
    /// In the order of group, name and key.
    const std::vector<StoredRow> &all() const { return rows_; }

private:
    std::vector<StoredRow> rows_;
    QMultiHash<QString, std::size_t> byName_;
};

} // namespace exchange
