#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <QVariantList>

namespace sample {

/// Writes many rows of one table through a prepared statement that takes a block of rows at a time, so that a server is
/// not asked once per row. Raises RuntimeError. What was added stands after finish().
class BulkInsert
{
public:
    BulkInsert(const QSqlDatabase &database, const QString &table, const QStringList &columns);

    /// Values in the order of the columns; dates as text, flags as 1 and 0.
    void add(std::initializer_list<QVariant> row);
    void finish();

private:
    void send(QSqlQuery &query);
    QString statement(qsizetype rows) const;

    QSqlDatabase database_;
    QString table_;
    QStringList columns_;
    QSqlQuery fullBlock_;
    QVariantList pending_;
};

} // namespace sample
