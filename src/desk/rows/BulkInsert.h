#pragma once

#include "platform/ado/Connection.h"

#include <QString>
#include <QStringList>
#include <QVariantList>

namespace rows {

/// Writes many rows of one table, a block of them by one statement, so that a server is not asked once per row. Raises RuntimeError. What was added stands after finish().
class BulkInsert
{
public:
    BulkInsert(ado::Connection &connection, const QString &table, const QStringList &columns);

    /// Values in the order of the columns; dates as text, flags as 1 and 0.
    void add(const QVariantList &row);
    void finish();

private:
    void send();

    ado::Connection &connection_;
    QString table_;
    QStringList columns_;
    QVariantList pending_;
};

} // namespace rows
