#pragma once

#include "desk/journal/Entries.h"

#include <QAbstractTableModel>

namespace desk {

/// Entries of the journal, a row each.
class JournalModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Time, Who, Action, Table, Order, Customer, Changes, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    void setEntries(std::vector<journal::Entry> entries);
    /// Captions and rows for a spreadsheet.
    QByteArray csv() const;
    /// The same for paper, beneath a title.
    QString html(const QString &title) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString text(const journal::Entry &entry, int column) const;
    QStringList captions() const;

    std::vector<journal::Entry> entries_;
};

} // namespace desk
