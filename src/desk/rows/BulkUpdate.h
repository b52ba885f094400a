#pragma once

#include "platform/ado/Connection.h"

#include <QStringList>
#include <QVariantList>

namespace rows {

/// Changes many rows of one of the clinic's tables, each by its key, a block of them by one statement. Raises RuntimeError. What was
/// added stands after finish().
class BulkUpdate
{
public:
    BulkUpdate(ado::Connection &connection, const QString &table, const QString &key, const QStringList &columns);

    /// Values in the order of the columns, as rows::exactValue gives them.
    void add(qint64 key, const QVariantList &values);
    void finish();

private:
    void send();

    ado::Connection &connection_;
    const bool asTexts_;
    QString head_;
    QString tail_;
    const qsizetype cells_; ///< of a row, with its key
    QVariantList pending_;
};

} // namespace rows
